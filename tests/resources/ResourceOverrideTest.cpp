#include "resources/ResourceOverride.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace {

// An application that uses one of the library's numbers for a text of its own.
class ApplicationTexts final : public obmgr::ResourceSource {
public:
    const wchar_t* Find(unsigned id) const override
    {
        return id == IDS_READ_CANCELLED ? L"application's own" : nullptr;
    }
};

CString Loaded(unsigned id)
{
    CString text;
    obmgr::LoadResourceString(id, text);
    return text;
}

// Each test starts and ends with the application's texts installed.
class ResourceOverride : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
        m_before = AfxGetResourceHandle();
        AfxSetResourceHandle(&m_application);
    }
    void TearDown() override { AfxSetResourceHandle(m_before); }

    ApplicationTexts m_application;
    obmgr::ResourceHandle m_before = nullptr;
};

} // namespace

TEST_F(ResourceOverride, PutsTheLibrarysTextsInFrontOfTheApplications)
{
    EXPECT_EQ(Loaded(IDS_READ_CANCELLED), L"application's own");
    {
        const CObmgerResourceOverride guard;
        EXPECT_EQ(AfxGetResourceHandle(), obmgr::LibraryResourceHandle());
        EXPECT_EQ(Loaded(IDS_READ_CANCELLED), L"読み込みを中止しました。");
    }
    EXPECT_EQ(AfxGetResourceHandle(), &m_application);
    EXPECT_EQ(Loaded(IDS_READ_CANCELLED), L"application's own");
}

TEST_F(ResourceOverride, RestoresWhenAnExceptionLeavesTheScope)
{
    const auto fail = [] {
        const CObmgerResourceOverride guard;
        throw std::runtime_error("left early");
    };
    EXPECT_THROW(fail(), std::runtime_error);
    EXPECT_EQ(AfxGetResourceHandle(), &m_application);
}

TEST_F(ResourceOverride, RestoresOnAnEarlyReturn)
{
    const auto leave = [](bool early) {
        const CObmgerResourceOverride guard;
        if (early) return 1;
        return 2;
    };
    EXPECT_EQ(leave(true), 1);
    EXPECT_EQ(AfxGetResourceHandle(), &m_application);
}

TEST_F(ResourceOverride, NestedGuardsGiveBackOneAfterTheOther)
{
    ApplicationTexts inner;
    {
        const CObmgerResourceOverride first;
        {
            AfxSetResourceHandle(&inner);
            {
                const CObmgerResourceOverride second;
                EXPECT_EQ(AfxGetResourceHandle(), obmgr::LibraryResourceHandle());
            }
            EXPECT_EQ(AfxGetResourceHandle(), &inner);
        }
    }
    EXPECT_EQ(AfxGetResourceHandle(), &m_application);
}

TEST_F(ResourceOverride, RestoresThatNothingWasInstalled)
{
    AfxSetResourceHandle(nullptr);
    {
        const CObmgerResourceOverride guard;
    }
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
}

TEST_F(ResourceOverride, FollowsAChangeOfLanguageInsideItsScope)
{
    const CObmgerResourceOverride guard;
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_EQ(Loaded(IDS_READ_CANCELLED), L"Cancelled reading.");
}

TEST_F(ResourceOverride, IsDestroyedThroughItsBase)
{
    class Derived final : public CObmgerResourceOverride {};
    static_assert(std::has_virtual_destructor_v<CObmgerResourceOverride>);
    std::unique_ptr<CObmgerResourceOverride> guard = std::make_unique<Derived>();
    EXPECT_EQ(AfxGetResourceHandle(), obmgr::LibraryResourceHandle());
    guard.reset();
    EXPECT_EQ(AfxGetResourceHandle(), &m_application);
}

TEST_F(ResourceOverride, TextsThatTheApplicationLacksComeFromTheLibrary)
{
    EXPECT_EQ(Loaded(IDS_SAVE_CANCELLED), L"ファイルへの保存を中止しました。");
}

TEST_F(ResourceOverride, LibraryCodeOutsideAGuardCanAskForItsOwnText)
{
    EXPECT_EQ(obmgr::ResourceText(IDS_READ_CANCELLED), L"読み込みを中止しました。");
}

TEST_F(ResourceOverride, UnknownNumberEmptiesTheText)
{
    CString text = L"old";
    EXPECT_FALSE(obmgr::LoadResourceString(99999, text));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_TRUE(obmgr::ResourceText(99999).IsEmpty());
}
