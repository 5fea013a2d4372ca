// The registry: small named values that outlive the program, kept machine-wide.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veldara {

enum class RegistryRoot { localMachine };
enum class RegistryType { none, string, dword, other };

// A value as it is stored: a string with its closing NUL, a number, or bytes of another type.
struct RegistryValue {
    RegistryType type = RegistryType::none; // none: the key or the value is missing
    std::string text;                       // string: up to (not including) the first NUL
    std::int32_t number = 0;                // dword
    std::vector<std::uint8_t> bytes;        // other: as stored
};

constexpr std::size_t fullAccessBuffer = 1024;
constexpr long moreData = 234; // the system's code for a value that does not fit

// Every call returns the platform's code, 0 for success, and throws nothing: a registry that cannot
// be used is an ordinary state that its callers live with.
class Registry {
  public:
    virtual ~Registry() = default;

    virtual long openKey(RegistryRoot root, const std::string& key) = 0; // and closes it again
    // Creates the key, with those above it, or opens it; and closes it again.
    virtual long createKey(RegistryRoot root, const std::string& key) = 0;
    virtual long queryValue(RegistryRoot root, const std::string& key, const std::string& name,
                            RegistryValue& value) = 0;
    // Opens the key with full access rights first, as the System Information lookup does. A value
    // of more characters than fullAccessBuffer, a closing NUL included, gives moreData; a text
    // keeps every NUL but the closing one.
    virtual long queryValueFullAccess(RegistryRoot root, const std::string& key,
                                      const std::string& name, RegistryValue& value) = 0;
    // Create or open the key, write, close. The closing NUL is stored with a string.
    virtual long setString(RegistryRoot root, const std::string& key, const std::string& name,
                           const std::string& text) = 0;
    virtual long setNumber(RegistryRoot root, const std::string& key, const std::string& name,
                           std::int32_t number) = 0;
};

} // namespace veldara
