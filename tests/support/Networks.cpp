#include "support/Networks.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace support {

namespace {

std::string withoutBlanks(std::string_view text)
{
    std::string result;
    for (const char c : text)
        if (c != ' ') result += c;
    return result;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

std::vector<std::string> words(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    std::vector<std::string> result;
    for (std::string word; stream >> word;)
        result.push_back(word);
    return result;
}

CString wide(const std::string& name)
{
    return std::wstring(name.begin(), name.end()).c_str();
}

} // namespace

void Network::Add(std::string_view text)
{
    std::string all = withoutBlanks(text);
    std::replace(all.begin(), all.end(), '\n', ';');
    std::string web;
    std::vector<std::pair<std::string, std::string>> connects; // set when all routes are there
    for (std::string part : split(all, ';')) {
        if (const auto colon = part.find(':'); colon != std::string::npos) {
            web = part.substr(0, colon);
            part.erase(0, colon + 1);
            if (!m_ids.contains(web)) AddWeb(web);
        }
        if (part.empty()) continue;
        const auto equals = part.find('=');
        std::string route = part.substr(0, equals);
        if (const auto into = route.find('>'); into != std::string::npos) {
            connects.emplace_back(route.substr(0, into), route.substr(into + 1));
            route.erase(into);
        }
        if (!m_ids.contains(route)) AddRoute(route, m_ids.at(web), 0);
        if (equals == std::string::npos) continue;
        for (const std::string& chain : split(part.substr(equals + 1), ',')) {
            const std::vector<std::string> nodes = split(chain, '-');
            for (const std::string& node : nodes)
                if (!m_ids.contains(node)) AddNode(node);
            for (std::size_t i = 1; i < nodes.size(); ++i)
                AddSpan(nodes[i - 1], nodes[i], m_ids.at(route));
        }
    }
    for (const auto& [route, into] : connects)
        Route(route).SetConnectId(static_cast<unsigned long>(m_ids.at(into)));
}

long Network::AddWeb(const std::string& name, int disposalType)
{
    CWeb* const web = manager.CreateWeb(disposalType, {});
    web->WriteSubAttribute(L"webname", wide(name));
    Name(web->GetId32(), name);
    return web->GetId32();
}

long Network::AddRoute(const std::string& name, long webId, long connectId)
{
    CRoute* const route = manager.CreateRoute(webId, connectId, {});
    route->WriteSubAttribute(L"routenum", wide(name));
    Name(route->GetId32(), name);
    return route->GetId32();
}

long Network::AddNode(const std::string& name)
{
    const long id = manager.CreateNode({})->GetId32();
    Name(id, name);
    return id;
}

long Network::AddSpan(const std::string& upper, const std::string& lower, long routeId)
{
    const long id = manager.CreateSpanNoarea(m_ids.at(upper), m_ids.at(lower), routeId, {})->GetId32();
    const std::string name = upper + "-" + lower;
    if (!m_ids.contains(name)) Name(id, name);
    return id;
}

Ids Network::List(std::string_view names) const
{
    std::vector<long> ids;
    for (const std::string& name : words(names))
        ids.push_back(m_ids.at(name));
    return Ids(ids);
}

void Network::Name(long id, const std::string& name)
{
    if (!m_ids.emplace(name, id).second) throw std::invalid_argument("there is a " + name + " already");
    m_names[id] = name;
}

void Network::NameNew()
{
    for (const CNode* node : manager.GetNodeDb())
        NameNew(*node, L"mark", "n");
    for (const CRoute* route : manager.GetRouteDb())
        NameNew(*route, L"routenum", "R");
    for (const CWeb* web : manager.GetWebDb())
        NameNew(*web, L"webname", "W");
}

void Network::NameNew(const CPipeObject& object, const wchar_t* key, const char* prefix)
{
    if (m_names.contains(object.GetId32())) return;
    const CString text = object.GetSubAttribute(key);
    std::string name;
    for (const wchar_t c : text.View())
        name += static_cast<char>(c);
    if (name.empty()) {
        int number = 1;
        do
            name = prefix + std::to_string(number++);
        while (m_ids.contains(name));
    }
    while (m_ids.contains(name))
        name += '\'';
    Name(object.GetId32(), name);
}

void Network::MarkNodes()
{
    for (CNode* node : manager.GetNodeDb())
        node->WriteSubAttribute(L"mark", wide(NameOf(node->GetId32())));
}

void Network::AddAreas()
{
    for (const CSpan* span : manager.GetSpanDb()) {
        Ids areas;
        if (!manager.GetAreaSetIdList(span->GetId32(), areas)) manager.CreateAreaSet(span->GetId32(), {});
    }
}

void Network::Set(const wchar_t* key, std::initializer_list<std::pair<const char*, const wchar_t*>> valuesByName)
{
    for (const auto& [name, value] : valuesByName)
        Find(m_ids.at(name))->WriteSubAttribute(key, value);
}

std::wstring Network::Get(const wchar_t* key, std::string_view names) const
{
    std::wstring result;
    for (const std::string& name : words(names)) {
        const CPipeObject* const object = Find(m_ids.at(name));
        if (!result.empty()) result += L' ';
        result += object->IsSubAttribute(key) ? std::wstring(object->GetSubAttribute(key).View()) : L"-";
    }
    return result;
}

std::string Network::NameOf(long id) const
{
    if (id == 0) return "0";
    const auto found = m_names.find(id);
    return found == m_names.end() ? "#" + std::to_string(id) : found->second;
}

std::string Network::Names(const std::vector<long>& ids) const
{
    std::string result;
    for (const long id : ids)
        result += (result.empty() ? "" : " ") + NameOf(id);
    return result;
}

std::string Network::Shape() const
{
    const auto spansOf = [&](long routeId) {
        std::string text = " =";
        for (const CSpan* span : manager.GetSpanDb())
            if (static_cast<long>(span->GetRouteId()) == routeId)
                text += " " + NameOf(static_cast<long>(span->GetUpperNodeId())) + "-" +
                        NameOf(static_cast<long>(span->GetLowerNodeId()));
        return text;
    };
    std::string result;
    std::vector<long> listed;
    for (const CWeb* web : manager.GetWebDb()) {
        result += (result.empty() ? "" : " | ") + NameOf(web->GetId32()) + ":";
        const char* separator = " ";
        for (const CRoute* route : manager.GetRouteDb()) {
            if (static_cast<long>(route->GetWebId()) != web->GetId32()) continue;
            result += separator + NameOf(route->GetId32());
            if (route->GetConnectId() != 0) result += ">" + NameOf(static_cast<long>(route->GetConnectId()));
            result += spansOf(route->GetId32());
            listed.push_back(route->GetId32());
            separator = "; ";
        }
    }
    for (const CSpan* span : manager.GetSpanDb()) {
        const long routeId = static_cast<long>(span->GetRouteId());
        if (std::find(listed.begin(), listed.end(), routeId) != listed.end()) continue;
        result += (result.empty() ? "" : " | ") + NameOf(routeId) + spansOf(routeId);
        listed.push_back(routeId);
    }
    return result;
}

std::string Network::AllNodes() const
{
    std::vector<long> ids;
    for (const CNode* node : manager.GetNodeDb())
        ids.push_back(node->GetId32());
    return Names(ids);
}

std::string Network::Ends(std::string_view spans) const
{
    std::string result;
    for (const std::string& name : words(spans)) {
        const CSpan& span = Span(name);
        result += (result.empty() ? "" : " ") + NameOf(static_cast<long>(span.GetUpperNodeId())) + "-" +
                  NameOf(static_cast<long>(span.GetLowerNodeId()));
    }
    return result;
}

std::string Network::Connects(std::string_view routes) const
{
    std::vector<long> ids;
    for (const std::string& name : words(routes))
        ids.push_back(static_cast<long>(Route(name).GetConnectId()));
    return Names(ids);
}

void Network::Append(std::string_view names, CList<long, long>& list) const
{
    for (const std::string& name : words(names))
        list.AddTail(m_ids.at(name));
}

CPipeObject* Network::Find(long id) const
{
    if (CPipeObject* const object = manager.GetRouteObjectOriginal(id)) return object;
    if (CPipeObject* const object = manager.GetSpanObjectOriginal(id)) return object;
    if (CPipeObject* const object = manager.GetNodeObjectOriginal(id)) return object;
    if (CPipeObject* const object = manager.GetWebObjectOriginal(id)) return object;
    throw std::out_of_range("no such object: " + NameOf(id));
}

} // namespace support
