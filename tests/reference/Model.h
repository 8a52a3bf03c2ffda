// The store as its contract tells it: vectors and plain walks, a full copy of everything at a begin. Never optimised,
// and nothing shared with the library but the list of types. The randomised tests compare the library with it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace reference {

struct Record {
    int id = 0;
    int status = 0;
    std::vector<int> links;
    std::vector<std::pair<std::wstring, std::wstring>> attributes; // in the order in which the keys were first set

    std::wstring Get(const std::wstring& key) const; // empty when absent
    bool Has(const std::wstring& key) const;
    void Set(const std::wstring& key, const std::wstring& value);
    int Int(const std::wstring& key) const; // 0 when absent or no number
};
using RecordPtr = std::shared_ptr<Record>;
using Condition = std::function<bool(const Record&)>;

// Leading blanks, a sign, digits; held within 32 bits.
int ReadNumber(const std::wstring& text);

struct Table {
    std::vector<RecordPtr> live;
    std::vector<int> ids;
    std::vector<RecordPtr> retired;
    std::vector<RecordPtr> saved;
    std::vector<int> savedIds;
    unsigned transactionCount = 0;

    bool Add(int id, const RecordPtr& record);
    void Remove(int id);
    Record* Find(int id) const;
    void Clear();
    void Begin();
    void Commit();
    void Abort();

    std::vector<RecordPtr> Where(const Condition& condition) const;
    const Record* First(const Condition& condition) const;
};

// Each place in turn is compared with every later one and swapped when its "order" is greater; each comparison looks
// both records up by id.
std::vector<int> SortedByOrder(const Table& table, std::vector<int> ids);
std::vector<int> IdsOf(const std::vector<RecordPtr>& records);

class Model {
public:
    explicit Model(std::size_t types) : m_tables(types) {}

    Table& operator[](int type) { return m_tables[static_cast<std::size_t>(type)]; }
    const Table& operator[](int type) const { return m_tables[static_cast<std::size_t>(type)]; }

    void Begin();
    void Commit();
    // False where the library raises an invalid argument.
    bool Abort();
    void Initialize();
    void ResetIdLists();
    int Count() const;
    int MaxId() const;

    // Removes every record of the table that fits, as far as it is still there by then.
    int RemoveWhere(int type, const Condition& condition);

    int lastId = 0;

private:
    std::vector<Table> m_tables;
    std::vector<int> m_idStack;
    unsigned m_nesting = 0;
};

} // namespace reference
