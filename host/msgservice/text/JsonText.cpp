#include "msgservice/text/JsonText.h"

#include <nlohmann/json.hpp>

void msgservice::AppendJsonText(std::string_view text, std::string& json)
{
    json += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}
