#include "logtool/InputBytes.h"

#include "logtool/Commands.h"

#include <utility>

namespace logtool
{

InputBytes::InputBytes(std::unique_ptr<Input> input, std::string name)
    : m_input(std::move(input)), m_name(std::move(name))
{
}

msgservice::ByteInput::Outcome InputBytes::Read(std::span<char> room, std::size_t& size)
{
    const Input::Result result = m_input->Read(room.data(), room.size(), size);
    if (result == Input::Result::Error)
        m_notices = m_name + ": cannot be read: " + SystemReason() + "\n";
    return result == Input::Result::Data ? Outcome::Bytes : Outcome::End;
}

std::string InputBytes::TakeNotices()
{
    return std::exchange(m_notices, {});
}

} // namespace logtool
