// The registry of Windows under its machine-wide root, through the byte-text calls: the process's
// code page is UTF-8, so names and values outside ASCII pass through them.
#pragma once

#include "platform/registry.h"

namespace veldara {

class MachineRegistry : public Registry {
  public:
    long openKey(RegistryRoot root, const std::string& key) override;
    // Makes the keys above it too when they are missing, as the system's call does.
    long createKey(RegistryRoot root, const std::string& key) override;
    long queryValue(RegistryRoot root, const std::string& key, const std::string& name,
                    RegistryValue& value) override;
    long queryValueFullAccess(RegistryRoot root, const std::string& key, const std::string& name,
                              RegistryValue& value) override;
    long setString(RegistryRoot root, const std::string& key, const std::string& name,
                   const std::string& text) override;
    long setNumber(RegistryRoot root, const std::string& key, const std::string& name,
                   std::int32_t number) override;
};

} // namespace veldara
