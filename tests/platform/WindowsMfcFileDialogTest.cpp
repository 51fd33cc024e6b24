// The dialog that asks for files, with somebody who types into it.
#include "afxdlgs.h"
#include "tests/support/WindowApp.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

const char* g_typed = nullptr; // null cancels the dialog

UINT_PTR CALLBACK Type(HWND page, UINT message, WPARAM, LPARAM lParam)
{
    if (message != WM_NOTIFY || reinterpret_cast<NMHDR*>(lParam)->code != CDN_INITDONE)
        return 0;
    constexpr WPARAM kNameField = 0x47C;
    const HWND dialog = ::GetParent(page);
    if (g_typed)
        ::SendMessage(dialog, CDM_SETCONTROLTEXT, kNameField, reinterpret_cast<LPARAM>(g_typed));
    ::PostMessage(dialog, WM_COMMAND, g_typed ? IDOK : IDCANCEL, 0);
    return 0;
}

class MfcFileDialog : public testing::Test
{
protected:
    MfcFileDialog()
    {
        std::filesystem::create_directory(m_folder);
        for (const char* const name : {"a.log", "b b.log", "c"})
            std::ofstream(m_folder / name) << name;
    }
    ~MfcFileDialog() override
    {
        std::filesystem::current_path(m_folder.parent_path()); // the dialog has gone to the folder
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    INT_PTR Run(CFileDialog& dialog, const char* typed)
    {
        g_typed = typed;
        dialog.m_ofn.lpfnHook = &Type;
        dialog.m_ofn.Flags |= OFN_ENABLEHOOK;
        dialog.m_ofn.lpstrInitialDir = m_start.c_str();
        return dialog.DoModal();
    }

    // The paths that were chosen, without the folder's.
    std::string Chosen(const CFileDialog& dialog) const
    {
        std::string chosen;
        for (POSITION position = dialog.GetStartPosition(); position;)
        {
            const std::string path = static_cast<LPCSTR>(dialog.GetNextPathName(position));
            const bool isBelow = path.starts_with(m_start + "\\");
            chosen += (isBelow ? path.substr(m_start.size() + 1) : "elsewhere " + path) + "|";
        }
        return chosen;
    }

    std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "MfcFileDialog";
    std::string m_start = m_folder.string();
};

TEST_F(MfcFileDialog, TellsWhatWasChosen)
{
    const DWORD flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
    CFileDialog open(TRUE, "log", nullptr, flags, "Logs (*.log)|*.log|All files (*.*)|*.*||");
    EXPECT_EQ(0, std::memcmp("Logs (*.log)\0*.log\0All files (*.*)\0*.*\0", open.m_ofn.lpstrFilter, 40));
    EXPECT_EQ(nullptr, open.GetStartPosition());
    ASSERT_EQ(IDOK, Run(open, "a.log"));
    EXPECT_EQ("a.log|", Chosen(open));
    EXPECT_EQ(CString((m_start + "\\a.log").c_str()), open.GetPathName());
    EXPECT_EQ(CString("a.log"), open.GetFileName());
    EXPECT_EQ(CString("log"), open.GetFileExt());
    EXPECT_EQ(CString("a"), open.GetFileTitle());
    EXPECT_FALSE(open.GetReadOnlyPref());

    CFileDialog cancelled(TRUE);
    EXPECT_EQ(IDCANCEL, Run(cancelled, nullptr));

    CFileDialog save(FALSE, "txt", "first.csv");
    EXPECT_EQ(CString("first.csv"), save.GetPathName());
    ASSERT_EQ(IDOK, Run(save, "new"));
    EXPECT_EQ(CString("new.txt"), save.GetFileName()) << "with the extension that was not typed";
}

TEST_F(MfcFileDialog, TellsEachOfSeveralFiles)
{
    char buffer[4096] = {};
    CFileDialog several(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT | OFN_HIDEREADONLY);
    several.m_ofn.lpstrFile = buffer;
    several.m_ofn.nMaxFile = sizeof(buffer);
    ASSERT_EQ(IDOK, Run(several, "\"a.log\" \"b b.log\" \"c\""));
    EXPECT_EQ("a.log|b b.log|c|", Chosen(several));
    EXPECT_EQ(CString(m_start.c_str()), several.GetPathName());
    buffer[0] = '\0'; // what is there is where the dialog begins
    ASSERT_EQ(IDOK, Run(several, "\"c\""));
    EXPECT_EQ("c|", Chosen(several));
}

} // namespace
