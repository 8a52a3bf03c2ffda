#include "reference/Model.h"

#include <algorithm>
#include <climits>

namespace reference {

std::wstring Record::Get(const std::wstring& key) const
{
    for (const auto& [name, value] : attributes)
        if (name == key) return value;
    return {};
}

bool Record::Has(const std::wstring& key) const
{
    for (const auto& pair : attributes)
        if (pair.first == key) return true;
    return false;
}

void Record::Set(const std::wstring& key, const std::wstring& value)
{
    for (auto& [name, old] : attributes) {
        if (name != key) continue;
        old = value;
        return;
    }
    attributes.emplace_back(key, value);
}

int Record::Int(const std::wstring& key) const
{
    return ReadNumber(Get(key));
}

int ReadNumber(const std::wstring& text)
{
    std::size_t at = 0;
    while (at < text.size() && text[at] == L' ')
        ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) negative = text[at++] == L'-';
    long long value = 0;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at)
        value = std::min<long long>(value * 10 + (text[at] - L'0'), 1LL << 40);
    if (negative) value = -value;
    return static_cast<int>(std::clamp<long long>(value, INT_MIN, INT_MAX));
}

bool Table::Add(int id, const RecordPtr& record)
{
    if (id >= 2147483647 - 100) return false;
    for (const int known : ids)
        if (known == id) return false;
    live.push_back(record);
    ids.push_back(id);
    return true;
}

void Table::Remove(int id)
{
    for (std::size_t i = 0; i < live.size();) {
        if (live[i]->id != id) {
            ++i;
            continue;
        }
        const RecordPtr record = live[i];
        live.erase(live.begin() + static_cast<std::ptrdiff_t>(i));
        if (std::find(retired.begin(), retired.end(), record) == retired.end()) retired.push_back(record);
        const auto listed = std::find(ids.begin(), ids.end(), id);
        if (listed != ids.end()) ids.erase(listed);
    }
}

Record* Table::Find(int id) const
{
    for (const RecordPtr& record : live)
        if (record->id == id) return record.get();
    return nullptr;
}

void Table::Clear()
{
    live.clear();
    ids.clear();
    retired.clear();
}

void Table::Begin()
{
    if (transactionCount == 0) {
        for (const RecordPtr& record : live)
            saved.push_back(std::make_shared<Record>(*record));
        savedIds.insert(savedIds.end(), ids.begin(), ids.end());
    }
    ++transactionCount;
}

void Table::Commit()
{
    if (--transactionCount != 0) return;
    saved.clear();
    savedIds.clear();
    retired.clear();
}

void Table::Abort()
{
    if (--transactionCount != 0) return;
    live.clear();
    ids.clear();
    live.swap(saved);
    ids.swap(savedIds);
}

std::vector<RecordPtr> Table::Where(const Condition& condition) const
{
    std::vector<RecordPtr> found;
    for (const RecordPtr& record : live)
        if (condition(*record)) found.push_back(record);
    return found;
}

const Record* Table::First(const Condition& condition) const
{
    for (const RecordPtr& record : live)
        if (condition(*record)) return record.get();
    return nullptr;
}

std::vector<int> SortedByOrder(const Table& table, std::vector<int> ids)
{
    for (std::size_t i = 0; i < ids.size(); ++i)
        for (std::size_t j = i + 1; j < ids.size(); ++j)
            if (table.Find(ids[i])->Int(L"order") > table.Find(ids[j])->Int(L"order")) std::swap(ids[i], ids[j]);
    return ids;
}

std::vector<int> IdsOf(const std::vector<RecordPtr>& records)
{
    std::vector<int> ids;
    for (const RecordPtr& record : records)
        ids.push_back(record->id);
    return ids;
}

void Model::Begin()
{
    if (m_nesting != 0) {
        ++m_nesting;
        return;
    }
    m_idStack.push_back(lastId);
    for (Table& table : m_tables)
        table.Begin();
    ++m_nesting;
}

void Model::Commit()
{
    if (--m_nesting != 0) return;
    if (!m_idStack.empty()) m_idStack.pop_back();
    for (Table& table : m_tables)
        table.Commit();
}

bool Model::Abort()
{
    if (--m_nesting != 0) return true;
    if (m_idStack.empty()) return false;
    lastId = m_idStack.back();
    m_idStack.pop_back();
    for (Table& table : m_tables)
        table.Abort();
    return true;
}

void Model::Initialize()
{
    lastId = 0;
    m_idStack.clear();
    for (Table& table : m_tables)
        table.Clear();
}

void Model::ResetIdLists()
{
    for (Table& table : m_tables) {
        table.ids.clear();
        for (const RecordPtr& record : table.live)
            table.ids.push_back(record->id);
    }
}

int Model::Count() const
{
    std::size_t count = 0;
    for (const Table& table : m_tables)
        count += table.live.size();
    return static_cast<int>(count);
}

int Model::MaxId() const
{
    int greatest = 0;
    for (const Table& table : m_tables)
        for (const RecordPtr& record : table.live)
            greatest = std::max(greatest, record->id);
    return greatest;
}

int Model::RemoveWhere(int type, const Condition& condition)
{
    Table& table = (*this)[type];
    const std::vector<RecordPtr> found = table.Where(condition);
    for (const RecordPtr& record : found)
        if (std::find(table.live.begin(), table.live.end(), record) != table.live.end()) table.Remove(record->id);
    return static_cast<int>(found.size());
}

} // namespace reference
