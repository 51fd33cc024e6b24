// The built library as a host meets it.

#include "QmLogOutputFile.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/Process.h"

namespace
{

using WindowsLibraryTest = LogFolderTest;

TEST_F(WindowsLibraryTest, ItsFunctionsAreFoundByName)
{
    const HMODULE library = ::GetModuleHandleA("QmLog.dll");
    for (const char* const name :
         {"_Z17QmLogWriterDefinePKc", "_Z19QmLogWriterCloseAllv", "_Z17QmLogMakeFilePathPKcPc",
          "_Z18QmLogGlobalTimeGetv", "_Z17QmLogReaderDefinePKc"})
        EXPECT_NE(nullptr, reinterpret_cast<void*>(::GetProcAddress(library, name))) << name;
}

// The only test that uses the registry of writers: their number is limited for the whole process.
TEST_F(WindowsLibraryTest, ANameHasOneWriterAndThereAreTen)
{
    CQmLogWriter& main = QmLogWriterDefine("Main");
    for (int more = 2; more <= 10; ++more)
        EXPECT_STRNE("", QmLogWriterDefine(std::to_string(more).c_str()).GetFilePath());
    EXPECT_FALSE(QmLogWriterDefine("Eleventh").Write("text"));
    EXPECT_EQ(&main, &QmLogWriterDefine("Main"));

    // Closed, the defined writers let others write their logs, and open them again themselves.
    EXPECT_TRUE(main.Write("a"));
    EXPECT_TRUE(QmLogWriterCloseAll());
    Child child;
    EXPECT_EQ("true", child.Ask("write Main b"));
    EXPECT_EQ("true", child.Ask("close"));
    EXPECT_TRUE(main.Write("c"));
    EXPECT_TRUE(main.WriteFormat("%zu %lld %600s", std::size_t{1}, -2LL, "x"));
    EXPECT_EQ("abc1 -2 " + std::string(599, ' ') + "x", Contents("Main.LOG"));
}

TEST_F(WindowsLibraryTest, AFailureIsReportedWithTheSystemsText)
{
    char text[512] = {};
    ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     ERROR_FILE_NOT_FOUND, 0, text, sizeof(text), nullptr);
    CQmLogReader reader;
    reader.SetFilePath("Missing");
    unsigned long length = 0;
    EXPECT_FALSE(reader.ReadLength(0, length));
    const std::string report = Contents("QmLog.LOG");
    EXPECT_TRUE(report.ends_with("\n\nCQmLogReader::ReadRow().CreateFileRead(Row)\n" + std::string(text)))
        << report;
}

TEST_F(WindowsLibraryTest, OutputGoesToTheFolderThatExistsAndFitsOrEndsTheProcess)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("Out").c_str(), nullptr));
    ::SetCurrentDirectoryA(Path("").c_str());
    for (const std::string& folder : {Path("Out"), Path("Out\\ \t"), Path("Missing"), std::string()})
    {
        SetVariable("QM_RUN_OUTPUT_PATH", folder);
        QmLogOutputFile file("Out");
        file.WriteLine("%d of %s", 1, "two");
        file.WriteDirect("\0", 1);
    }
    ::SetCurrentDirectoryA("C:\\"); // a folder in use is not removed
    const std::string run("\n----------\n1 of two\0", 21);
    EXPECT_EQ(run + run, Contents("Out\\Out.TXT"));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, ::GetFileAttributesA(Path("Missing").c_str()));
    EXPECT_EQ("", Contents("Out.TXT"));

    // Output that does not fit ends the process, with nothing of it written.
    SetVariable("QM_RUN_OUTPUT_PATH", Path(""));
    Child child;
    EXPECT_EQ("true", child.Ask("output Fits 4095"));
    EXPECT_EQ(11 + 4095u, Contents("Fits.TXT").size());
    EXPECT_EQ("", child.Ask("output Long 4096"));
    EXPECT_NE(0u, child.Finish());
    EXPECT_EQ(11u, Contents("Long.TXT").size());
}

} // namespace
