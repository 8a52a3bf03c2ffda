#include "control/UserInterface.h"

#include <csignal>
#include <set>

#include <gtest/gtest.h>

namespace {

class Nothing : public obmgr::UserInterface {
public:
    std::unique_ptr<obmgr::ProgressView> OpenProgress() override { return nullptr; }
    int ShowMessage(const CString&, unsigned) override { return IDCANCEL; }
    std::optional<CString> AskNewName(const obmgr::NameQuestion&) override { return std::nullopt; }
};

} // namespace

TEST(UserInterface, InstallGivesTheOneBeforeAndNullIsTheTerminal)
{
    Nothing one;
    Nothing two;
    obmgr::UserInterface& terminal = obmgr::CurrentUserInterface();
    EXPECT_EQ(obmgr::InstallUserInterface(&one), nullptr);
    EXPECT_EQ(&obmgr::CurrentUserInterface(), &one);
    EXPECT_EQ(obmgr::InstallUserInterface(&two), &one);
    EXPECT_EQ(obmgr::InstallUserInterface(nullptr), &two);
    EXPECT_EQ(&obmgr::CurrentUserInterface(), &terminal);
}

TEST(UserInterface, FirstFreeNameCountsFromTwo)
{
    const std::set<CString> taken{CString(L"網"), CString(L"網(2)"), CString(L"網(3)"), CString(L"b(2)")};
    const auto isTaken = [&](const CString& name) { return taken.contains(name); };
    EXPECT_EQ(obmgr::FirstFreeName(L"網", isTaken), L"網(4)");
    EXPECT_EQ(obmgr::FirstFreeName(L"b(2)", isTaken), L"b(2)(2)");
    EXPECT_EQ(obmgr::FirstFreeName(L"free", isTaken), L"free");
    EXPECT_EQ(obmgr::FirstFreeName(L"any", nullptr), L"any");
}

TEST(UserInterface, CancelIsAFlagThatASignalHandlerMaySet)
{
    static_assert(noexcept(obmgr::RequestCancel()));
    obmgr::ResetCancel();
    EXPECT_FALSE(obmgr::IsCancelRequested());
    const auto before = std::signal(SIGUSR1, [](int) { obmgr::RequestCancel(); });
    std::raise(SIGUSR1);
    std::signal(SIGUSR1, before);
    EXPECT_TRUE(obmgr::IsCancelRequested());
    obmgr::RequestCancel();
    EXPECT_TRUE(obmgr::IsCancelRequested());
    obmgr::ResetCancel();
    EXPECT_FALSE(obmgr::IsCancelRequested());
}
