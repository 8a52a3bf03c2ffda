// Random edits that go to the library and to the plain-scan model alike, and the comparison of the two.
#pragma once

#include "reference/Model.h"
#include "support/FamilyTable.h"

#include <random>

namespace reference {

class RandomEdits {
public:
    // With few types, the tables of those grow; with all, every family is met.
    RandomEdits(unsigned seed, std::vector<objectdata::OBJECTTYPE> types);

    // One edit to both.
    void Step();
    // Fails the running test where library and model differ.
    void CompareObjects() const;
    void CompareFamilies();
    void CompareLookups();

private:
    using Type = objectdata::OBJECTTYPE;

    int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    Type PickType() { return m_types[m_random() % m_types.size()]; }
    int PickId(); // mostly one that is in use
    std::wstring PickKey();
    std::wstring PickValue();
    const support::Family& FamilyOf(Type type) const { return support::families()[static_cast<std::size_t>(type)]; }
    obmgr::ObjectTable& TableOf(Type type) { return FamilyOf(type).table(m_manager); }

    Record* CreateInModel(Type type, const std::vector<int>& links, const support::Values& values);
    void Create();
    void CreateWebOrSpan();
    void AddWithAnyId();
    void EditLive();
    static void EditCopy(CPipeObject& object, Record& record, const std::wstring& key, const std::wstring& value,
                         int link, int id);
    void SetCopy();
    void Delete();
    void DeleteById(Type type, int id);
    void DeleteByKey();
    void Transact();
    void ClearOrReset();

    std::mt19937 m_random;
    std::vector<Type> m_types;
    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
    Model m_model;
};

} // namespace reference
