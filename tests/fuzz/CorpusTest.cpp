// The stored corpus, given to its targets: what fuzzers once found is not met again.
#include "tests/fuzz/Fuzz.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

TEST(FuzzCorpus, HoldsForWhatIsStored)
{
    for (const fuzz::Target& target : fuzz::kTargets)
    {
        SCOPED_TRACE(target.name);
        target.function({});
        std::size_t count = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(QM_FUZZ_CORPUS) / target.name))
        {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            target.function(bytes);
            ++count;
        }
        EXPECT_LT(5u, count) << "is there a corpus?";
    }
}

} // namespace
