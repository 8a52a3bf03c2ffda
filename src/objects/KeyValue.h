// A key and its value, as callers hand them to the Create operations.
#pragma once

#include "framework/Collections.h"
#include "framework/String.h"

class CKeyValue {
public:
    CKeyValue() = default;
    CKeyValue(const wchar_t* key, const wchar_t* value) : m_key(key), m_value(value) {}

    const CString& GetKey() const { return m_key; }
    const CString& GetValue() const { return m_value; }
    void SetKey(const wchar_t* key) { m_key = key; }
    void SetValue(const wchar_t* value) { m_value = value; }

private:
    CString m_key;
    CString m_value;
};

using CKeyValueArray = CArray<CKeyValue, CKeyValue>;
