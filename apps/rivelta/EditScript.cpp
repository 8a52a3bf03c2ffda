#include "EditScript.h"

#include "Design.h"
#include "EditOperations.h"
#include "Objects.h"
#include "TemporaryFile.h"
#include "Texts.h"
#include "control/UserInterface.h"
#include "store/ObDefManager.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <set>
#include <unordered_map>

#include <fcntl.h>
#include <unistd.h>

namespace obmgr::tool {

namespace {

// All that the file gives: 0, or the errno value.
int readAll(const std::string& path, std::string& text)
{
    const Descriptor file(path == "-" ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) return errno;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = ::read(file.Get(), block.data(), block.size());
        if (count == 0) return 0;
        if (count > 0)
            text.append(block.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR || IsCancelRequested())
            return errno;
    }
}

// "line 3, column 14" of a place in the text.
std::pair<std::size_t, std::size_t> placeOf(const std::string& text, std::size_t byte)
{
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(byte, text.size()));
    const auto line = static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
    const std::size_t lineStart = line == 1 ? 0 : text.rfind('\n', byte - 1) + 1;
    return {line, byte > lineStart ? byte - lineStart : 1};
}

// Finds fields that stand twice, of which the parser keeps only one. Its names are those of the objects that are open.
class DoubleFields {
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed)
    {
        const auto level = static_cast<std::size_t>(depth);
        switch (event) {
        case Json::parse_event_t::object_start:
            if (level == kOperationLevel) ++m_operations;
            m_open.resize(std::max(m_open.size(), level + 2));
            m_open[level + 1].clear();
            break;
        case Json::parse_event_t::key: {
            const std::string& name = parsed.get_ref<const std::string&>();
            if (level < m_open.size() && !m_open[level].insert(name).second) m_found.push_back(PathOf(level, name));
            break;
        }
        default: break;
        }
        return true;
    }
    const std::vector<std::string>& Found() const { return m_found; }

private:
    static constexpr std::size_t kOperationLevel = 2; // {"operations": [ {here

    std::string PathOf(std::size_t level, const std::string& name) const
    {
        if (level <= kOperationLevel) return name;
        const std::string operation = "operations[" + std::to_string(m_operations - 1) + "].";
        return operation + (level == kOperationLevel + 1 ? name : "..." + name);
    }

    std::vector<std::set<std::string>> m_open;
    std::size_t m_operations = 0;
    std::vector<std::string> m_found;
};

bool isName(const std::string& text)
{
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    return !text.empty() && isLetter(text[0]) &&
           std::all_of(text.begin(), text.end(), [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

std::string_view tagOf(OBJECTTYPE type)
{
    return RecordOf(type).tag;
}

std::string joined(const std::vector<std::string>& names)
{
    return fmt::format("{}", fmt::join(names, ", "));
}

class Checker {
public:
    Checker(const CObjectManager& design, const std::string& path) : m_design(design), m_path(path) {}

    void Check(const Json& script)
    {
        if (!script.is_object()) return Fault("", Say(Text::ScriptMustBe, Say(Text::FormObject)));
        for (const auto& [name, value] : script.items())
            if (name != "operations") Fault(name, Say(Text::ScriptUnknownField, shownPath()));
        const auto list = script.find("operations");
        if (list == script.end()) return Fault("operations", TextOf(Text::ScriptMissing));
        if (!list->is_array()) return Fault("operations", Say(Text::ScriptMustBe, TextOf(Text::FormList)));
        for (const Json& operation : *list) {
            m_operations.push_back({});
            CheckOperation(operation, "operations[" + std::to_string(m_operations.size() - 1) + "]");
        }
    }

    // True when there were no faults.
    bool Tell() const
    {
        constexpr std::size_t kMostTold = 20;
        for (std::size_t i = 0; i < m_faults.size() && i < kMostTold; ++i)
            Complain(m_path, m_faults[i]);
        if (m_faults.size() > kMostTold) Complain(m_path, Say(Text::ScriptMoreFaults, m_faults.size() - kMostTold));
        if (!m_faults.empty()) Complain(m_path, TextOf(Text::ScriptFaulty));
        return m_faults.empty();
    }

    std::vector<Operation> Take() { return std::move(m_operations); }

private:
    std::string shownPath() const { return ShownName(m_path); }

    void Fault(const std::string& place, const std::string& what)
    {
        m_faults.push_back(place.empty() ? what : place + ": " + what);
    }
    void MustBe(const std::string& place, const std::string& form) { Fault(place, Say(Text::ScriptMustBe, form)); }

    void CheckOperation(const Json& json, const std::string& place)
    {
        if (!json.is_object()) return MustBe(place, Say(Text::FormObject));
        const auto op = json.find("op");
        if (op == json.end()) return Fault(place + ".op", TextOf(Text::ScriptMissing));
        if (!op->is_string()) return MustBe(place + ".op", TextOf(Text::FormText));
        const std::string& name = op->get_ref<const std::string&>();
        const OperationInfo* const info = FindOperation(name);
        if (!info) return RefuseOperation(name, place + ".op");

        Operation& operation = m_operations.back();
        operation.info = info;
        for (const auto& [field, value] : json.items())
            if (field != "op" && field != "as" && !HasField(*info, field)) RefuseField(*info, field, place);
        for (const Field& field : info->fields) {
            const std::string fieldPlace = place + "." + std::string(field.name);
            const auto value = json.find(std::string(field.name));
            if (value != json.end())
                operation.values.push_back(ValueOfField(field.kind, *value, fieldPlace));
            else
                operation.values.emplace_back();
            if (value == json.end() && field.isRequired) Fault(fieldPlace, TextOf(Text::ScriptMissing));
        }
        CheckDefaults(*info, place);
        // Last: an operation cannot name itself.
        if (const auto as = json.find("as"); as != json.end()) TakeName(*as, place + ".as");
    }

    void RefuseOperation(const std::string& name, const std::string& place)
    {
        std::vector<std::string> names;
        for (const OperationInfo& info : Operations())
            names.emplace_back(info.name);
        const auto near = NearNames(name, names);
        Fault(place, Say(Text::ScriptUnknownOperation, name) + "\n" +
                         (near.empty() ? TextOf(Text::ScriptAllOperations) : Say(Text::UsageNear, joined(near))));
    }

    static bool HasField(const OperationInfo& info, const std::string& name)
    {
        return std::any_of(info.fields.begin(), info.fields.end(),
                           [&name](const Field& field) { return field.name == name; });
    }

    void RefuseField(const OperationInfo& info, const std::string& name, const std::string& place)
    {
        std::vector<std::string> names = {"op", "as"};
        for (const Field& field : info.fields)
            names.emplace_back(field.name);
        std::string what = Say(Text::ScriptUnknownField, info.name);
        if (const auto near = NearNames(name, names); !near.empty())
            what.append("\n").append(Say(Text::UsageNear, joined(near)));
        Fault(place + "." + name, what);
    }

    void CheckDefaults(const OperationInfo& info, const std::string& place)
    {
        CMapStringToString values;
        for (const std::string_view tag : info.defaults)
            if (!GetObDefManager()->GetDefValue(FromUtf8(tag), values))
                return Fault(place, Say(Text::ScriptNeedsDefaults, tag));
    }

    void TakeName(const Json& json, const std::string& place)
    {
        Operation& operation = m_operations.back();
        if (!json.is_string() || !isName(json.get_ref<const std::string&>()))
            return MustBe(place, TextOf(Text::FormName));
        if (operation.info->results.empty()) return Fault(place, Say(Text::ScriptNoResults, operation.info->name));
        operation.as = json.get<std::string>();
        if (!m_names.emplace(operation.as, m_operations.size() - 1).second)
            Fault(place, "'" + operation.as + "' " + TextOf(Text::ScriptTwice));
    }

    FieldValue ValueOfField(FieldKind kind, const Json& json, const std::string& place)
    {
        switch (kind) {
        case FieldKind::Count: return NumberOf(json, 1, kMostAtOnce, Say(Text::FormCount, kMostAtOnce), place);
        case FieldKind::Disposal: return NumberOf(json, 0, 5, TextOf(Text::FormDisposal), place);
        case FieldKind::Flag:
            if (json.is_boolean()) return json.get<bool>();
            MustBe(place, TextOf(Text::FormFlag));
            return {};
        case FieldKind::Text:
            if (!json.is_string()) {
                MustBe(place, TextOf(Text::FormText));
                return {};
            }
            CheckText(json.get_ref<const std::string&>(), place);
            return json.get<std::string>();
        case FieldKind::Values: return ChangesOf(json, false, place);
        case FieldKind::Changes: return ChangesOf(json, true, place);
        default: return IdOf(kind, json, place);
        }
    }

    FieldValue NumberOf(const Json& json, long least, long most, const std::string& form, const std::string& place)
    {
        if (json.is_number_integer()) {
            const auto number = json.get<std::int64_t>();
            const bool wraps = json.is_number_unsigned() && number < 0;
            if (!wraps && number >= least && number <= most) return static_cast<long>(number);
        }
        MustBe(place, form);
        return {};
    }

    FieldValue ChangesOf(const Json& json, bool mayRemove, const std::string& place)
    {
        if (!json.is_object()) {
            MustBe(place, Say(Text::FormObject));
            return {};
        }
        std::vector<Change> changes;
        for (const auto& [key, value] : json.items()) {
            std::string keyPlace = place;
            keyPlace.append(".").append(key);
            if (!NameOfKey(InternKey(key)).isXmlName) Fault(keyPlace, TextOf(Text::ScriptBadKey));
            if (value.is_null() && mayRemove) {
                changes.emplace_back(key, std::nullopt);
            } else if (value.is_string()) {
                CheckText(value.get_ref<const std::string&>(), keyPlace);
                changes.emplace_back(key, value.get<std::string>());
            } else {
                MustBe(keyPlace, TextOf(mayRemove ? Text::FormChange : Text::FormText));
            }
        }
        return changes;
    }

    void CheckText(const std::string& text, const std::string& place)
    {
        const bool isBad = std::any_of(text.begin(), text.end(), [](char c) {
            return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
        });
        if (isBad) Fault(place, TextOf(Text::ScriptControl));
    }

    FieldValue IdOf(FieldKind kind, const Json& json, const std::string& place)
    {
        const bool isText = json.is_string();
        if (isText && json.get_ref<const std::string&>().rfind('$', 0) == 0)
            return RefOf(kind, json.get<std::string>(), place);
        if (isText && kind == FieldKind::Web) return WebOf(json.get<std::string>(), place);
        if (json.is_number_integer()) {
            const auto id = json.get<std::int64_t>();
            if (id == 0 && kind == FieldKind::Connect) return IdValue(0L);
            if (id > 0 && id <= std::numeric_limits<std::int32_t>::max())
                return ExistingId(kind, static_cast<long>(id), place);
        }
        MustBe(place, TextOf(kind == FieldKind::Web       ? Text::FormWeb
                             : kind == FieldKind::Connect ? Text::FormConnect
                                                          : Text::FormId));
        return {};
    }

    FieldValue ExistingId(FieldKind kind, long id, const std::string& place)
    {
        const auto objects = FindObjects(m_design, id);
        const OBJECTTYPE wanted = TypeOf(kind);
        if (objects.empty())
            Fault(place, Say(Text::ScriptUnknownId, id));
        else if (wanted == objectdata::Any && objects.size() > 1)
            Fault(place, Say(Text::ScriptAmbiguousId, objects.size(), id));
        else if (wanted != objectdata::Any && !m_design.TableOf(wanted).Find(id))
            Fault(place, Say(Text::ScriptWrongType, tagOf(wanted), tagOf(objects.front()->GetObjectType())));
        return IdValue(id);
    }

    FieldValue WebOf(const std::string& nameOrId, const std::string& place)
    {
        const auto webs = FindWebs(m_design, nameOrId);
        if (webs.size() == 1) return IdValue(static_cast<long>(webs.front()->GetId32()));
        Fault(place, webs.empty() ? UnknownWebMessage(m_design, nameOrId, "FILE")
                                  : Say(Text::ScriptAmbiguousWeb, webs.size(), nameOrId));
        return {};
    }

    // $NAME, $NAME.RESULT, $NAME.RESULT[ENTRY]
    FieldValue RefOf(FieldKind kind, const std::string& text, const std::string& place)
    {
        const std::size_t dot = std::min(text.find('.'), text.size());
        const std::size_t bracket = std::min(text.find('[', dot), text.size());
        const std::string name = text.substr(1, dot - 1);
        const auto operation = m_names.find(name);
        if (operation == m_names.end()) {
            std::vector<std::string> names;
            for (const auto& [known, index] : m_names)
                names.push_back(known);
            std::string what = Say(Text::ScriptUnknownName, name);
            if (const auto near = NearNames(name, names); !near.empty())
                what.append("\n").append(Say(Text::UsageNear, joined(near)));
            Fault(place, what);
            return {};
        }
        const std::vector<ResultInfo>& results = m_operations[operation->second].info->results;
        auto result = results.begin();
        if (dot < text.size()) {
            const std::string part = text.substr(dot + 1, bracket - dot - 1);
            result =
                std::find_if(results.begin(), results.end(), [&part](const ResultInfo& r) { return r.name == part; });
            if (result == results.end()) {
                std::vector<std::string> parts;
                parts.reserve(results.size());
                for (const ResultInfo& known : results)
                    parts.emplace_back(known.name);
                Fault(place, Say(Text::ScriptUnknownPart, name, part, joined(parts)));
                return {};
            }
        }
        std::size_t entry = 0;
        if (bracket < text.size()) {
            const std::string number = text.substr(bracket + 1, text.size() - bracket - 2);
            const bool isNumber =
                !number.empty() && number.size() <= 7 &&
                std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
            if (!isNumber || text.back() != ']') {
                MustBe(place, TextOf(Text::FormId));
                return {};
            }
            if (!result->isList) Fault(place, Say(Text::ScriptNoList, result->name));
            entry = std::stoul(number);
        }
        const OBJECTTYPE wanted = TypeOf(kind);
        if (wanted != objectdata::Any && wanted != result->type)
            Fault(place, Say(Text::ScriptWrongType, tagOf(wanted), tagOf(result->type)));
        return IdValue(ResultRef{operation->second, static_cast<std::size_t>(result - results.begin()), entry});
    }

    const CObjectManager& m_design;
    std::string m_path;
    std::vector<Operation> m_operations;
    std::unordered_map<std::string, std::size_t> m_names;
    std::vector<std::string> m_faults;
};

} // namespace

std::optional<Json> LoadScript(const std::string& path)
{
    std::string text;
    if (const int error = readAll(path, text)) {
        Complain(ShownName(path), IsCancelRequested() ? std::string(TextOf(Text::ReadCancelled))
                                  : error == EISDIR   ? std::string(TextOf(Text::IsFolder))
                                                      : Say(Text::CannotOpen, SystemMessage(error)));
        return std::nullopt;
    }
    DoubleFields doubles;
    try {
        Json script = Json::parse(text, std::ref(doubles));
        for (const std::string& place : doubles.Found())
            Complain(ShownName(path), place + ": " + TextOf(Text::ScriptTwice));
        if (doubles.Found().empty()) return script;
    } catch (const Json::parse_error& error) {
        const auto [line, column] = placeOf(text, error.byte);
        std::string what = error.what();
        if (const std::size_t colon = what.find(": "); colon != std::string::npos) what.erase(0, colon + 2);
        Complain(ShownName(path), Say(Text::ScriptIsNoJson, line, column, what));
    } catch (const Json::exception& error) {
        const std::string what = error.what(); // "[json.exception.out_of_range.406] number overflow ..."
        Complain(ShownName(path), Say(Text::CannotRead, what.substr(what.find("] ") + 2)));
    }
    return std::nullopt;
}

std::optional<std::vector<Operation>> CheckScript(const Json& script, const CObjectManager& design,
                                                  const std::string& path)
{
    Checker checker(design, ShownName(path));
    checker.Check(script);
    if (!checker.Tell()) return std::nullopt;
    return checker.Take();
}

} // namespace obmgr::tool
