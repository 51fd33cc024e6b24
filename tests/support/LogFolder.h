// A fresh log folder on the real file system: the fixture of tests that need the real system.
#pragma once

#include "QmLogRow.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

// "QM_LOG_FOLDER" names the folder, for this process and for children it starts. It is removed afterwards,
// unless QM_TEST_FOLDER gave it: then it belongs to the script that runs the test.
// Writers and readers are best locals of the test: those of the registries outlive the folder.
class LogFolderTest : public testing::Test
{
protected:
    LogFolderTest();
    ~LogFolderTest() override;

    std::string Path(const std::string& file) const { return m_folder + file; }

    // Of the environment, for this process and its children. The library takes an empty one for none.
    static void SetVariable(const char* name, const std::string& value);

    // The bytes of a file of the folder, also while it is open for writing; empty when it is missing.
    std::string Contents(const std::string& file) const;
    void SetContents(const std::string& file, const std::string& bytes) const;
    std::vector<CQmLogRow> Rows(const std::string& log) const;

    // The damage that QmLogVerify finds, a line each.
    std::string Damage(const std::vector<std::string>& logs) const;

private:
    std::string m_folder; // with a backslash at its end
    bool m_owned;
};
