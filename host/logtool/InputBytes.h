// An input of the host as bytes of a text log.
#pragma once

#include "logtool/Host.h"
#include "msgservice/sources/ByteInput.h"

#include <memory>
#include <string>

namespace logtool
{

class InputBytes : public msgservice::ByteInput
{
public:
    InputBytes(std::unique_ptr<Input> input, std::string name);

    Outcome Read(std::span<char> room, std::size_t& size) override;
    std::string Name() const override { return m_name; }
    std::string TakeNotices() override;

private:
    std::unique_ptr<Input> m_input;
    std::string m_name;
    std::string m_notices;
};

} // namespace logtool
