#include "vkservices/Services.h"

#include "vkservices/IAppRegistry.h"

#ifdef _WIN32
#include "WindowsAppRegistry.h"
#endif

#include <atomic>

IAppRegistry::~IAppRegistry() = default;

namespace VkServices
{
namespace
{

// A static of this function, so that the registry is there for the constructors of other files' statics.
std::atomic<IServiceRegistry*>& Installed()
{
#ifdef _WIN32
    static std::atomic<IServiceRegistry*> installed = &WindowsServiceRegistry();
#else
    static std::atomic<IServiceRegistry*> installed = nullptr;
#endif
    return installed;
}

} // namespace

IService::~IService() = default;
IServiceRegistry::~IServiceRegistry() = default;

IServiceRegistry* Services::get_service_registry()
{
    return Installed();
}

void Services::set_service_registry(IServiceRegistry* registry)
{
    Installed() = registry;
}

} // namespace VkServices
