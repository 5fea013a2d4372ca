// The registry in a file of the user's configuration folder. Every call reads the file afresh and a
// change is made under a lock, so several programs at once see and keep each other's values.
#pragma once

#include "platform/linux/stored_values.h"
#include "platform/registry.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace veldara {

class ValueFileRegistry : public Registry {
  public:
    // The folder that holds the file "values"; made, with those above it, at the first write.
    explicit ValueFileRegistry(std::string folder);

    // Codes are those of the system that the registry comes from, see below.
    long openKey(RegistryRoot root, const std::string& key) override;
    long createKey(RegistryRoot root, const std::string& key) override;
    long queryValue(RegistryRoot root, const std::string& key, const std::string& name,
                    RegistryValue& value) override;
    long queryValueFullAccess(RegistryRoot root, const std::string& key, const std::string& name,
                              RegistryValue& value) override;
    long setString(RegistryRoot root, const std::string& key, const std::string& name,
                   const std::string& text) override;
    long setNumber(RegistryRoot root, const std::string& key, const std::string& name,
                   std::int32_t number) override;

    static constexpr long fileNotFound = 2;
    static constexpr long accessDenied = 5;
    static constexpr long writeFault = 29;
    static constexpr long lockedByAnother = 33;
    static constexpr long invalidName = 87;
    static constexpr long diskFull = 112;

    // A value file has a few kilobytes; a larger one than this is not read into memory.
    static constexpr std::size_t largestFile = std::size_t{1} << 20U;
    // How long another program's change is waited for: a window stands still meanwhile.
    static constexpr std::chrono::seconds lockPatience{2};

  private:
    long read(StoredValues& values) const;
    long change(const std::function<void(StoredValues&)>& act) const;
    long store(const std::string& key, const std::string& name, const RegistryValue& value) const;

    std::string folder_;
    std::string file_;
};

} // namespace veldara
