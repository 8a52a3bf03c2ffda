#include "persistence/PipeObjectException.h"

#include "resources/Resources.h"

#include <gtest/gtest.h>

TEST(PipeObjectException, TakesItsTextFromTheTextsOfTheLibrary)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    CPipeObjectException exception(IDS_SAVE_CANCELLED);
    EXPECT_EQ(exception.GetText(), L"Saved to file has been canceled.");
    exception.SetText(CString(L"span ID=3"));
    EXPECT_EQ(exception.GetText(), L"span ID=3");
    exception.SetText(0);
    EXPECT_TRUE(exception.GetText().IsEmpty());
}

TEST(PipeObjectException, IsRaisedAsAPointerAndFreedWithDelete)
{
    CString message;
    try {
        throw new CPipeObjectException(CString(L"stop"));
    } catch (CException* raised) {
        EXPECT_TRUE(raised->GetErrorMessage(message));
        EXPECT_TRUE(raised->IsKindOf(RUNTIME_CLASS(CPipeObjectException)));
        raised->Delete();
    }
    EXPECT_EQ(message, L"stop");
}

TEST(PipeObjectException, EmptyTextIsNoMessage)
{
    CString message = L"old";
    EXPECT_FALSE(CPipeObjectException(0).GetErrorMessage(message));
    EXPECT_TRUE(message.IsEmpty());
}
