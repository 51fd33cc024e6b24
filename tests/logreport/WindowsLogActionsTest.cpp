// What the message viewer's commands do with the selected messages.
#include "tests/logreport/LogDialogDriver.h"
#include "tests/logreport/PlainMessages.h"
#include "tests/support/Keys.h"

#include <fstream>
#include <sstream>

namespace
{

class LogActions : public MessageViewerTest
{
protected:
    LogActions()
    {
        for (const char* const body : {"one", "two\r\nlines", "thr\xC3\xA9\xC3\xA9", "four"})
            service.messages.emplace_back(body);
        viewer.AddMsg(4, nullptr);
        Tick();
        char folder[MAX_PATH] = "";
        ::GetTempPath(sizeof(folder), folder);
        path = std::string(folder) + "log_actions";
    }
    // The file's contents; it is gone then.
    static std::string Take(const std::string& file)
    {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        ::DeleteFile(file.c_str());
        return text.str();
    }

    static std::ptrdiff_t Tabs(const std::string& text) { return std::count(text.begin(), text.end(), '\t'); }

    std::string Clipboard(UINT format) { return ClipboardText(viewer, format); }

    std::string path;
};

TEST_F(LogActions, ExportTheSelectedRows)
{
    EXPECT_FALSE(viewer.ExportTo((path + ".txt").c_str())) << "nothing is selected";
    viewer.SetSelection(1, 2);
    EXPECT_TRUE(viewer.ExportTo((path + ".txt").c_str()));
    EXPECT_EQ("two\r\nlines\nthr\xC3\xA9\xC3\xA9\n", Take(path + ".txt")) << "the bodies alone";
    EXPECT_EQ("0 1", Line(service.holds, service.mostHolds));
    viewer.SetShowReport(1);
    EXPECT_TRUE(viewer.ExportTo((path + ".csv").c_str()));
    EXPECT_EQ("\xEF\xBB\xBF"
              "10:00,1,\"two\r\nlines\"\r\n10:00,1,thr\xC3\xA9\xC3\xA9\r\n",
              Take(path + ".csv"));
    viewer.SetUseAllFields(true);
    EXPECT_TRUE(viewer.ExportTo((path + ".txt").c_str()));
    EXPECT_EQ(24, Tabs(Take(path + ".txt")));
    const std::string wrong = "Can't write file \"" + path + ".log\": Wrong file extension";
    {
        Driver driver("Export file", [&](HWND box) {
            EXPECT_EQ(wrong, TextOf(box, 0xFFFF));
            ::SendMessage(box, WM_COMMAND, IDOK, 0);
        });
        EXPECT_FALSE(viewer.ExportTo((path + ".log").c_str()));
    }
    {
        Driver driver("Export file", [&](HWND box) { ::SendMessage(box, WM_COMMAND, IDOK, 0); });
        EXPECT_FALSE(viewer.ExportTo((path + "\\no folder\\a.txt").c_str()));
    }
    service.messages.resize(1); // and what is gone meanwhile is left out
    EXPECT_TRUE(viewer.ExportTo((path + ".xml").c_str()));
    EXPECT_EQ(std::string::npos, Take(path + ".xml").find("<Message>"));
}

TEST_F(LogActions, LongExportsCanBeGivenUp)
{
    int asked = 0; // so slowly that it takes more than a moment
    service.moment = [&asked](std::string_view moment) {
        moment == "get" && ++asked % 100 == 0 ? ::Sleep(1) : void();
    };
    service.messages.assign(100'000, PlainMessage("a message"));
    viewer.AddMsg(100'000, nullptr);
    Tick();
    viewer.SelectAll();
    std::ofstream(path + ".txt") << "before";
    {
        Driver driver("Export file", [&](HWND dialog) {
            EXPECT_NE(std::string::npos, TextOf(dialog, 9621).find(" %"));
            EXPECT_FALSE(viewer.CopyMessages()) << "one action at a time";
            ::SendMessage(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        EXPECT_FALSE(viewer.ExportTo((path + ".txt").c_str()));
    }
    EXPECT_EQ("before", Take(path + ".txt"));
    EXPECT_EQ(0, service.holds);
    {
        Driver driver("Export file", [&](HWND) { viewer.SetLogMsgService(nullptr); });
        EXPECT_FALSE(viewer.ExportTo((path + ".txt").c_str())) << "the service has gone";
    }
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributes((path + ".txt.~0").c_str()));
}

TEST_F(LogActions, CopyAsTextAndAsATable)
{
    viewer.SetSelection(0, 2);
    EXPECT_TRUE(viewer.CopyMessages());
    EXPECT_EQ("one\ntwo\r\nlines\nthr\xC3\xA9\xC3\xA9\n", Clipboard(CF_UNICODETEXT));
    EXPECT_EQ("one\r\n\"two\r\nlines\"\r\nthr\xC3\xA9\xC3\xA9\r\n",
              Clipboard(::RegisterClipboardFormat("CSV")));
    EXPECT_EQ(0u, Clipboard(CF_TEXT).find("one\ntwo\r\nlines\nthr"));
    viewer.SelectNone();
    EXPECT_FALSE(viewer.CopyMessages());
    EXPECT_EQ(0u, Clipboard(CF_UNICODETEXT).find("one")) << "left alone";
}

TEST_F(LogActions, KeysAreCommands)
{
    viewer.SetFocus();
    const auto press = [this](WPARAM key) { viewer.SendMessage(WM_KEYDOWN, key); };
    press(VK_SPACE);
    EXPECT_EQ(0, viewer.GetFollow());
    press(VK_SPACE);
    EXPECT_EQ(1, viewer.GetFollow());
    const int asked = service.asked;
    viewer.UpdateWindow();
    press(VK_F5);
    EXPECT_GT(service.asked, asked);
    press(VK_DELETE);
    Tick();
    EXPECT_EQ(0, viewer.GetItemCount());
}

} // namespace
