// The keys and values of a new record, written in one expression:
//   design.CreateNode(Keys().Text(L"mholeno", L"M1").Real(L"cx", 12.5))
#pragma once

#include "objects/KeyValue.h"

class Keys {
public:
    Keys() = default;
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;

    Keys& Text(const wchar_t* key, const CString& value)
    {
        m_values.Add(CKeyValue(key, value));
        return *this;
    }
    Keys& Number(const wchar_t* key, long value)
    {
        CString text;
        text.Format(L"%d", value);
        return Text(key, text);
    }
    // In the form that the library itself writes: 13 decimals.
    Keys& Real(const wchar_t* key, double value)
    {
        CString text;
        text.Format(L"%.13f", value);
        return Text(key, text);
    }
    operator const CKeyValueArray&() const { return m_values; }

private:
    CKeyValueArray m_values;
};
