// CIDObject: an object id with the key that it is sorted by.
#pragma once

class CIDObject {
public:
    CIDObject() = default;

    long GetID() const { return m_id; }
    void SetID(long id) { m_id = id; }
    long GetOrder() const { return m_order; }
    void SetOrder(long order) { m_order = order; }

    // By the key alone: of two with the same key neither is less.
    bool operator<(const CIDObject& other) const { return m_order < other.m_order; }

private:
    long m_id = 0;
    long m_order = 0;
};
