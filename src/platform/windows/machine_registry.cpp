#include "platform/windows/machine_registry.h"

#include <cstring>
#include <limits>

#include <windows.h>

namespace veldara {

namespace {

HKEY handleOf(RegistryRoot root) {
    switch (root) {
    case RegistryRoot::localMachine:
        break;
    }
    return HKEY_LOCAL_MACHINE;
}

// An open key, closed at the end of its scope.
class Key {
  public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (handle_ != nullptr) {
            RegCloseKey(handle_);
        }
    }

    long open(RegistryRoot root, const std::string& name) {
        return RegOpenKeyA(handleOf(root), name.c_str(), &handle_);
    }
    long openForEverything(RegistryRoot root, const std::string& name) {
        return RegOpenKeyExA(handleOf(root), name.c_str(), 0, KEY_ALL_ACCESS, &handle_);
    }
    long create(RegistryRoot root, const std::string& name) {
        return RegCreateKeyA(handleOf(root), name.c_str(), &handle_);
    }
    HKEY handle() const { return handle_; }

  private:
    HKEY handle_ = nullptr;
};

// The value's type and bytes. Another program may change it between the two questions, so a buffer
// that has become too small is asked for again.
long readBytes(HKEY key, const std::string& name, DWORD& type, std::vector<std::uint8_t>& bytes) {
    for (;;) {
        DWORD size = 0;
        long code = RegQueryValueExA(key, name.c_str(), nullptr, &type, nullptr, &size);
        if (code != ERROR_SUCCESS) {
            return code;
        }
        bytes.assign(size, ' ');
        // A null pointer would ask for the size again.
        std::uint8_t nothing = 0;
        std::uint8_t* const target = bytes.empty() ? &nothing : bytes.data();
        code = RegQueryValueExA(key, name.c_str(), nullptr, &type, target, &size);
        if (code == ERROR_SUCCESS) {
            bytes.resize(size);
        }
        if (code != ERROR_MORE_DATA) {
            return code;
        }
    }
}

std::string upToNul(const std::vector<std::uint8_t>& bytes) {
    std::string text(bytes.begin(), bytes.end());
    const std::size_t end = text.find('\0');
    return end == std::string::npos ? text : text.substr(0, end);
}

long readValue(HKEY key, const std::string& name, RegistryValue& value) {
    DWORD type = REG_NONE;
    std::vector<std::uint8_t> bytes;
    const long code = readBytes(key, name, type, bytes);
    if (code != ERROR_SUCCESS) {
        return code;
    }
    if (type == REG_SZ) {
        value.type = RegistryType::string;
        value.text = upToNul(bytes);
    } else if (type == REG_DWORD && bytes.size() == sizeof value.number) {
        value.type = RegistryType::dword;
        std::memcpy(&value.number, bytes.data(), sizeof value.number);
    } else {
        value.type = RegistryType::other;
        value.bytes = std::move(bytes);
    }
    return code;
}

long writeValue(RegistryRoot root, const std::string& keyName, const std::string& name, DWORD type,
                const void* data, std::size_t size) {
    if (size > std::numeric_limits<DWORD>::max()) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    Key key;
    const long code = key.create(root, keyName);
    if (code != ERROR_SUCCESS) {
        return code;
    }
    return RegSetValueExA(key.handle(), name.c_str(), 0, type, static_cast<const BYTE*>(data),
                          static_cast<DWORD>(size));
}

} // namespace

long MachineRegistry::openKey(RegistryRoot root, const std::string& key) {
    return Key().open(root, key);
}

long MachineRegistry::createKey(RegistryRoot root, const std::string& key) {
    return Key().create(root, key);
}

long MachineRegistry::queryValue(RegistryRoot root, const std::string& key, const std::string& name,
                                 RegistryValue& value) {
    value = {};
    Key opened;
    const long code = opened.open(root, key);
    return code == ERROR_SUCCESS ? readValue(opened.handle(), name, value) : code;
}

long MachineRegistry::queryValueFullAccess(RegistryRoot root, const std::string& key,
                                           const std::string& name, RegistryValue& value) {
    value = {};
    Key opened;
    const long code = opened.openForEverything(root, key);
    return code == ERROR_SUCCESS ? readValue(opened.handle(), name, value) : code;
}

long MachineRegistry::setString(RegistryRoot root, const std::string& key, const std::string& name,
                                const std::string& text) {
    return writeValue(root, key, name, REG_SZ, text.c_str(), text.size() + 1);
}

long MachineRegistry::setNumber(RegistryRoot root, const std::string& key, const std::string& name,
                                std::int32_t number) {
    return writeValue(root, key, name, REG_DWORD, &number, sizeof number);
}

} // namespace veldara
