// The built library as a host meets it.

#include "QmLogOutputFile.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/Process.h"

#include <memory>
#include <regex>

namespace
{

using WindowsLibraryTest = LogFolderTest;

TEST_F(WindowsLibraryTest, ItsFunctionsAreFoundByName)
{
    const HMODULE library = ::LoadLibraryA("QmLog.dll");
    ASSERT_NE(nullptr, library);
    for (const char* const name :
         {"_Z17QmLogWriterDefinePKc", "_Z19QmLogWriterCloseAllv", "_Z17QmLogMakeFilePathPKcPc",
          "_Z18QmLogGlobalTimeGetv", "_Z17QmLogReaderDefinePKc"})
        EXPECT_NE(nullptr, reinterpret_cast<void*>(::GetProcAddress(library, name))) << name;
    ::FreeLibrary(library);
}

// The only test that uses the registry of writers: their number is limited for the whole process.
TEST_F(WindowsLibraryTest, ANameHasOneWriterAndThereAreTen)
{
    CQmLogWriter& main = QmLogWriterDefine("Main");
    EXPECT_EQ(&main, &QmLogWriterDefine(std::string("Main").c_str()));
    EXPECT_NE(&main, &QmLogWriterDefine("MAIN"));
    for (int more = 3; more <= 10; ++more)
        EXPECT_STREQ(std::to_string(more).c_str(),
                     QmLogWriterDefine(std::to_string(more).c_str()).GetFilePath());

    CQmLogWriter& eleventh = QmLogWriterDefine("Eleventh");
    EXPECT_FALSE(eleventh.Write("text"));
    EXPECT_FALSE(eleventh.BlockBegin(kPlainKind));
    EXPECT_EQ("", Contents("Eleventh.LOG"));
    EXPECT_EQ(&main, &QmLogWriterDefine("Main"));

    // Closed, the defined writers let others write their logs, and open them again themselves.
    EXPECT_TRUE(main.Write("a"));
    EXPECT_TRUE(QmLogWriterCloseAll());
    Child child;
    EXPECT_EQ("true", child.Ask("write Main b"));
    EXPECT_EQ("true", child.Ask("close"));
    EXPECT_TRUE(main.Write("c"));
    EXPECT_EQ("abc", Contents("Main.LOG"));
}

TEST_F(WindowsLibraryTest, AFailureIsReportedWithTheSystemsText)
{
    char text[512] = {};
    ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     ERROR_FILE_NOT_FOUND, 0, text, sizeof(text), nullptr);
    CQmLogReader reader;
    reader.SetFilePath("Missing");
    EXPECT_EQ(0u, reader.GetRowCount());
    EXPECT_EQ("", Contents("QmLog.LOG")) << "asking for the count reports nothing";

    unsigned long length = 0;
    EXPECT_FALSE(reader.ReadLength(0, length));
    const std::string report = Contents("QmLog.LOG");
    std::smatch match;
    ASSERT_TRUE(std::regex_search(
        report, match, std::regex("^\n[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} [0-9]{4}\n\n")))
        << report;
    EXPECT_EQ("CQmLogReader::ReadRow().CreateFileRead(Row)\n" + std::string(text), match.suffix().str());

    EXPECT_FALSE(reader.ReadLength(0, length));
    EXPECT_EQ(2 * report.size(), Contents("QmLog.LOG").size()) << "each call reports";
}

// Writes one line as a run would, to "Out.TXT" below QM_RUN_OUTPUT_PATH.
void RunWithOutput(const std::string& folder)
{
    ::SetEnvironmentVariableA("QM_RUN_OUTPUT_PATH", folder.c_str());
    QmLogOutputFile file("Out");
    file.WriteLine("%d of %s", 1, "two");
    file.WriteDirect("\0", 1);
}

TEST_F(WindowsLibraryTest, TheOutputFileGoesToTheFolderHoweverItEnds)
{
    const std::string run("\n----------\n1 of two\0", 21);
    std::string expected;
    const std::string bare = Path("Out");
    ASSERT_TRUE(::CreateDirectoryA(bare.c_str(), nullptr));
    for (const char* const ending : {"", "\\", "/", "\\ \t"})
    {
        RunWithOutput(bare + ending);
        expected += run;
        EXPECT_EQ(expected, Contents("Out\\Out.TXT")) << "ending \"" << ending << "\"";
    }

    // No folder is made, and no other place is taken instead.
    const std::string missing = Path("Missing");
    RunWithOutput(missing);
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesA(missing.c_str()));
    ::SetCurrentDirectoryA(Path("").c_str());
    RunWithOutput("");
    RunWithOutput(" ");
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesA("Out.TXT"));
    ::SetCurrentDirectoryA("C:\\"); // a folder in use is not removed
}

TEST_F(WindowsLibraryTest, OutputThatDoesNotFitEndsTheProcess)
{
    ::SetEnvironmentVariableA("QM_RUN_OUTPUT_PATH", Path("").c_str());
    Child child;
    EXPECT_EQ("true", child.Ask("output Fits 4095"));
    EXPECT_EQ(11 + 4095u, Contents("Fits.TXT").size());
    EXPECT_EQ("", child.Ask("output Long 4096"));
    EXPECT_NE(0u, child.Finish());
    EXPECT_EQ(11u, Contents("Long.TXT").size()) << "nothing of it was written";
}

} // namespace
