// The platform's own services.
#pragma once

#include "vkservices/Services.h"

namespace VkServices
{

// The registry in use until a host sets another; it knows "ServiceId_AppRegistry". It lives as long as the
// process.
IServiceRegistry& WindowsServiceRegistry();

} // namespace VkServices
