// Runs tests of windows, each with an application object of its own.
#include "tests/support/WindowApp.h"

#include <optional>

namespace
{

class WindowApps : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override { m_app.emplace(); }
    void OnTestEnd(const testing::TestInfo&) override { m_app.reset(); }

    std::optional<WindowApp> m_app;
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new WindowApps); // which owns it
    return RUN_ALL_TESTS();
}
