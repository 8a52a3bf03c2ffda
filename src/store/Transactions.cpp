// Nested transactions over all tables. Only the outermost begin and end count; an application that ends more often
// than it begins is out of step, by the counts told here, and gets no snapshot from the next begin.

#include "framework/Exception.h"
#include "store/ObjectManager.h"

void CObjectManager::BeginTransaction()
{
    if (m_transactionNesting != 0) {
        ++m_transactionNesting;
        return;
    }
    m_idStack.AddTail(m_lastObjectId);
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).Begin();
    ++m_transactionNesting;
}

void CObjectManager::CommitTransaction()
{
    if (m_isReading || --m_transactionNesting != 0) return;
    // Initialize inside the transaction has emptied the stack.
    if (!m_idStack.IsEmpty()) m_idStack.RemoveTail();
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).Commit();
}

void CObjectManager::AbortTransaction()
{
    if (m_isReading || --m_transactionNesting != 0) return;
    if (m_idStack.IsEmpty()) AfxThrowInvalidArgException();
    m_lastObjectId = m_idStack.RemoveTail();
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).Abort();
}
