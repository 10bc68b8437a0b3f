#include "cli/JsonText.h"

namespace quillmar::cli {

namespace {

template<typename Json>
std::string compact(const Json& value)
{
    return value.dump(/*indent=*/-1, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace);
}

} // namespace

std::string jsonText(const nlohmann::json& value)
{
    return compact(value);
}

std::string jsonText(const nlohmann::ordered_json& value)
{
    return compact(value);
}

} // namespace quillmar::cli
