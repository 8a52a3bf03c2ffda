#include "reference/NetworkScript.h"

#include <cstdio>

namespace reference {

// ---- outcomes ----

void Outcome::Add(bool result)
{
    m_text += result ? "true " : "false ";
}

void Outcome::Add(int number)
{
    m_text += std::to_string(number) + ' ';
}

void Outcome::Add(double number)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.12g ", number == 0 ? 0.0 : number);
    m_text += number != number ? "nan " : text;
}

void Outcome::Add(std::wstring_view text)
{
    m_text += '"' + obmgr::ToUtf8(text) + "\" ";
}

void Outcome::Add(const Ids& ids)
{
    m_text += '[';
    for (const int id : ids)
        m_text += std::to_string(id) + ' ';
    m_text += "] ";
}

void Outcome::Add(const CList<long, long>& ids)
{
    m_text += '[';
    for (const long id : ids)
        m_text += std::to_string(id) + ' ';
    m_text += "] ";
}

void Outcome::Add(const CStringArray& texts)
{
    m_text += '[';
    for (const CString& text : texts)
        Add(text);
    m_text += "] ";
}

void Outcome::Add(const std::vector<std::wstring>& texts)
{
    m_text += '[';
    for (const std::wstring& text : texts)
        Add(text);
    m_text += "] ";
}

void Outcome::Add(const CObjectManager& library, const CPipeObject* object)
{
    if (!object) {
        m_text += "null ";
        return;
    }
    int place = 0;
    int found = -1;
    library.TableOf(object->GetObjectType()).ForEach([&](const CPipeObject& live) {
        if (&live == object) found = place;
        ++place;
    });
    if (found < 0) return AddContents(*object);
    m_text += '#' + std::to_string(found) + ':';
    Add(static_cast<int>(object->GetId32()));
}

void Outcome::Add(const Network& model, Type type, const Record* record)
{
    if (!record) {
        m_text += "null ";
        return;
    }
    const std::vector<RecordPtr>& live = model[type].live;
    for (std::size_t place = 0; place < live.size(); ++place) {
        if (live[place].get() != record) continue;
        m_text += '#' + std::to_string(place) + ':';
        return Add(record->id);
    }
    AddContents(*record);
}

void Outcome::AddObjects(const Network& model, Type type, const Records& records)
{
    m_text += '[';
    for (const Record* const record : records)
        Add(model, type, record);
    m_text += "] ";
}

void Outcome::AddContents(const CPipeObject& object)
{
    m_text += '{';
    Add(static_cast<int>(object.GetId32()));
    for (const std::int32_t link : object.Links())
        Add(static_cast<int>(link));
    CMapStringToString values;
    object.GetSubAttribute(values);
    for (const auto& [key, value] : values) {
        m_text += obmgr::ToUtf8(key.View()) + '=';
        Add(value);
    }
    m_text += "} ";
}

void Outcome::AddContents(const Record& record)
{
    m_text += '{';
    Add(record.id);
    for (const int link : record.links)
        Add(link);
    for (const auto& [key, value] : record.attributes) {
        m_text += obmgr::ToUtf8(key) + '=';
        Add(std::wstring_view(value));
    }
    m_text += "} ";
}

// ---- packed arguments ----

void Choice::Pack(std::vector<int>& numbers, const Ids& ids)
{
    numbers.push_back(static_cast<int>(ids.size()));
    numbers.insert(numbers.end(), ids.begin(), ids.end());
}

void Choice::Pack(std::vector<std::wstring>& texts, const Values& values)
{
    for (const auto& [key, value] : values) {
        texts.push_back(key);
        texts.push_back(value);
    }
}

Ids Unpack::List()
{
    Ids ids(static_cast<std::size_t>(Number()));
    for (int& id : ids)
        id = Number();
    return ids;
}

Values Unpack::Pairs()
{
    Values values;
    while (m_text + 1 < m_args.texts.size()) {
        const std::wstring key = Text();
        values.emplace_back(key, Text());
    }
    return values;
}

} // namespace reference
