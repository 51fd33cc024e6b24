// "Log.TIM" under verification.
#pragma once

#include "logfiles/FileWindow.h"
#include "logfiles/VerifyLog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace logfiles
{

class VerifyTimes
{
public:
    // The file as it is now: to be looked at before the counters, which move on before it does.
    VerifyTimes(const std::string& folder, ReadProgress& progress);

    // Appends to `all` what is to be told, each kind once. `counter` is the last number that was given out.
    void Check(std::optional<std::uint32_t> counter, std::vector<Finding>& all);

private:
    FileWindow m_file;
};

} // namespace logfiles
