#include "support/Dump.h"

#include "support/FamilyTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace support {

std::string dump(const CObjectManager& manager)
{
    std::ostringstream text;
    for (const Family& family : families()) {
        manager.TableOf(family.type).ForEach([&](const CPipeObject& object) {
            text << family.name << ' ' << object.GetId32() << ' ' << object.GetStatus();
            for (const std::int32_t link : object.Links())
                text << " >" << link;
            CMapStringToString attributes;
            object.GetSubAttribute(attributes);
            for (const auto& [key, value] : attributes)
                text << ' ' << key << '=' << value;
            text << '\n';
        });
    }
    return text.str();
}

void expectWhole(const CObjectManager& manager, const wchar_t* key)
{
    for (const Family& family : families()) {
        const obmgr::ObjectTable& table = manager.TableOf(family.type);
        std::vector<CPipeObject*> objects;
        table.ForEach([&](CPipeObject& object) { objects.push_back(&object); });
        ASSERT_EQ(objects.size(), table.Count()) << family.name;
        for (const CPipeObject* object : objects) {
            const auto first = std::find_if(objects.begin(), objects.end(), [&](const CPipeObject* other) {
                return other->GetId32() == object->GetId32();
            });
            ASSERT_EQ(table.Find(object->GetId32()), *first) << family.name;
            std::vector<const CPipeObject*> expected;
            std::vector<const CPipeObject*> found;
            const CString value = object->GetSubAttribute(key);
            for (const CPipeObject* other : objects)
                if (other->GetSubAttribute(key) == value) expected.push_back(other);
            table.VisitByText(key, value.View(), [&](CPipeObject& other) {
                found.push_back(&other);
                return true;
            });
            ASSERT_EQ(found, expected) << family.name;
            if (object->Links().empty()) continue;
            expected.clear();
            found.clear();
            for (const CPipeObject* other : objects)
                if (other->Links()[0] == object->Links()[0]) expected.push_back(other);
            table.VisitByLink(0, object->Links()[0], [&](CPipeObject& other) {
                found.push_back(&other);
                return true;
            });
            ASSERT_EQ(found, expected) << family.name;
        }
    }
}

} // namespace support
