#include "WindowsAppRegistry.h"

#include "vkservices/IAppRegistry.h"
#include "zemacore/WindowsAppData.h"

#include <cstring>
#include <optional>
#include <string>

namespace VkServices
{
namespace
{

class WindowsAppRegistry : public IAppRegistry
{
public:
    bool GetString(const char* key, ZEMA::String& value) override
    {
        const std::optional<std::string> text = Find(key);
        value = text ? text->c_str() : "";
        return text.has_value();
    }

private:
    static std::optional<std::string> Find(const char* key)
    {
        if (key && ::lstrcmpiA(key, "Run.Output.Path") == 0)
        {
            const std::string path = ZEMA::EnvironmentValue("QM_RUN_OUTPUT_PATH");
            if (!path.empty())
                return path;
        }
        return ZEMA::ReadProfileText("Registry", key);
    }
};

class WindowsServices : public IServiceRegistry
{
public:
    IService* get_service(const char* id) override
    {
        return id && std::strcmp(id, "ServiceId_AppRegistry") == 0 ? &m_appRegistry : nullptr;
    }

private:
    WindowsAppRegistry m_appRegistry;
};

} // namespace

IServiceRegistry& WindowsServiceRegistry()
{
    // Never destroyed: destructors of other modules' statics may still ask for services.
    static IServiceRegistry& registry = *new WindowsServices;
    return registry;
}

} // namespace VkServices
