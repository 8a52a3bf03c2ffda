// What the element names of one file mean to its reader. A file of millions of elements has a few hundred names, so
// each is looked into once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>
#include <xercesc/util/XercesDefs.hpp>

#include "objects/KeyNames.h"
#include "objects/ObjectTypes.h"

namespace obmgr {

class ElementNames {
public:
    struct Name {
        std::u16string text;
        bool isRoot = false; // "pdroot" or "pipedata"
        bool isProfile = false;
        bool isShiftedKey = false;          // the value is an id that an append read moves
        const RecordInfo* record = nullptr; // null for a name that is no tag
        bool hasKey = false;
        KeyId key = 0;        // when hasKey
        Name* next = nullptr; // the name that came behind this one when it was last seen
    };

    // Names are told apart by case; what they mean does not depend on it.
    Name& Of(const XMLCh* text)
    {
        // Records of a type mostly have the same keys in the same order.
        Name* const guess = m_last ? m_last->next : nullptr;
        Name& name = guess && IsSame(text, guess->text) ? *guess : Find(text);
        if (m_last) m_last->next = &name;
        m_last = &name;
        return name;
    }
    // The key as which the name is stored.
    static KeyId KeyOf(Name& name)
    {
        if (!name.hasKey) MakeKey(name);
        return name.key;
    }

    static bool IsRoot(const XMLCh* text);
    static bool IsShiftedKey(const XMLCh* text);

private:
    struct Slot {
        std::uint64_t hash = 0;
        Name* name = nullptr;
    };

    static bool IsSame(const XMLCh* text, const std::u16string& known)
    {
        const char16_t* expected = known.c_str();
        while (*text && *text == *expected)
            ++text, ++expected;
        return *text == *expected;
    }
    static void MakeKey(Name& name);
    Name& Find(const XMLCh* text);
    Name& Add(std::u16string_view text, std::uint64_t hash);
    void Grow();

    std::vector<Slot> m_slots; // a power of two, none or at most half full
    std::deque<Name> m_names;
    Name* m_last = nullptr;
};

} // namespace obmgr
