// The application registry: string values of the application by key.
#pragma once

#include "vkservices/Services.h"

// Service "ServiceId_AppRegistry". The platform's own answers "Run.Output.Path" from the environment
// variable QM_RUN_OUTPUT_PATH when set and not empty; every other value, and this one otherwise, comes from
// the section "Registry" of the profile's INI file.
class QMPLATFORM_API IAppRegistry : public VkServices::IService
{
public:
    ~IAppRegistry() override;

    // False, with an empty value, when there is no such key.
    virtual bool GetString(const char* key, ZEMA::String& value) = 0;
};
