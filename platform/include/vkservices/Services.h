// The service registry: services of the process by name.
#pragma once

#include "zemacore/String.h"
#include "zemacore/ZemaApi.h"

namespace VkServices
{

// Base of all services; a caller converts to the service's own interface with dynamic_cast.
class QMPLATFORM_API IService
{
public:
    virtual ~IService();
};

class QMPLATFORM_API IServiceRegistry
{
public:
    virtual ~IServiceRegistry();

    // The service, owned by the registry; null when there is none of that name.
    virtual IService* get_service(const char* id) = 0;
};

class QMPLATFORM_API Services
{
public:
    // The registry in use; null when there is none. On Windows the platform's own is in use until a host
    // sets another; it knows "ServiceId_AppRegistry".
    static IServiceRegistry* get_service_registry();

    // Puts `registry`, which must outlive its use, in the place of the present one. Null: there is none.
    static void set_service_registry(IServiceRegistry* registry);
};

} // namespace VkServices
