// Every published member is called by a test. The names come from docs/manager-interface.md, which another test keeps
// equal to the headers; families made from the type table are left out here, as FamiliesTest calls them row by row.

#include <gmock/gmock.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool IsWord(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// "- `bool GetWebIdList(...) const`" gives GetWebIdList. Empty for a line that is no public member function: for
// constructors, which have no type in front, and for protected members, whose line goes on behind the signature.
std::string MemberName(const std::string& line)
{
    constexpr std::string_view kStart = "- `";
    if (line.rfind(kStart, 0) != 0 || line.back() != '`') return {};
    const std::size_t end = line.find('(');
    std::size_t begin = end;
    while (begin > 0 && IsWord(line[begin - 1]))
        --begin;
    const std::string before = line.substr(kStart.size(), begin - kStart.size());
    return before.empty() || before.back() == '~' || before == "explicit " ? std::string()
                                                                           : line.substr(begin, end - begin);
}

// Families made from the type table are left out.
std::set<std::string> PublishedNames()
{
    std::set<std::string> names;
    std::istringstream page(Contents(fs::path(RIVELTA_SOURCE_DIR) / "docs" / "manager-interface.md"));
    bool isFamily = false;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("##", 0) == 0) isFamily = line == "### Families, one set per record type";
        const std::string name = isFamily || line.empty() ? std::string() : MemberName(line);
        if (!name.empty()) names.insert(name);
    }
    return names;
}

// Every word of the tests that stands before an opening bracket or behind "::".
std::set<std::string> CalledNames()
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(RIVELTA_SOURCE_DIR) / "tests")) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string text = Contents(entry.path());
        for (std::size_t at = 0; at < text.size();) {
            if (!IsWord(text[at])) {
                ++at;
                continue;
            }
            const std::size_t begin = at;
            while (at < text.size() && IsWord(text[at]))
                ++at;
            const bool isCall = at < text.size() && text[at] == '(';
            const bool isMember = begin >= 2 && text.compare(begin - 2, 2, "::") == 0;
            if (isCall || isMember) names.insert(text.substr(begin, at - begin));
        }
    }
    return names;
}

TEST(PublishedNames, AreOnThePage)
{
    const std::set<std::string> names = PublishedNames();
    EXPECT_GT(names.size(), 100u);
    for (const char* name :
         {"Initialize", "AbortTransaction", "GetSectRecId", "DeleteNodeObject", "SetDefValue", "GetSubAttribute"})
        EXPECT_TRUE(names.count(name)) << name;
}

TEST(PublishedNames, AreEachCalledByATest)
{
    const std::set<std::string> called = CalledNames();
    std::vector<std::string> missing;
    for (const std::string& name : PublishedNames())
        if (!called.count(name)) missing.push_back(name);
    EXPECT_THAT(missing, testing::IsEmpty());
}

} // namespace
