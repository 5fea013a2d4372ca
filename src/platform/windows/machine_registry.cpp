#include "platform/windows/machine_registry.h"

#include "platform/text/wide_text.h"

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
        return RegOpenKeyExW(handleOf(root), wideText(name).c_str(), 0, KEY_READ, &handle_);
    }
    long openForEverything(RegistryRoot root, const std::string& name) {
        return RegOpenKeyExW(handleOf(root), wideText(name).c_str(), 0, KEY_ALL_ACCESS, &handle_);
    }
    long create(RegistryRoot root, const std::string& name) {
        return RegCreateKeyExW(handleOf(root), wideText(name).c_str(), 0, nullptr, 0,
                               MAXIMUM_ALLOWED, nullptr, &handle_, nullptr);
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
        long code = RegQueryValueExW(key, wideText(name).c_str(), nullptr, &type, nullptr, &size);
        if (code != ERROR_SUCCESS) {
            return code;
        }
        bytes.assign(size, ' ');
        // A null pointer would ask for the size again.
        std::uint8_t nothing = 0;
        std::uint8_t* const target = bytes.empty() ? &nothing : bytes.data();
        code = RegQueryValueExW(key, wideText(name).c_str(), nullptr, &type, target, &size);
        if (code == ERROR_SUCCESS) {
            bytes.resize(size);
        }
        if (code != ERROR_MORE_DATA) {
            return code;
        }
    }
}

// The stored text, which ends with a NUL, several, or none.
std::string textOf(const std::vector<std::uint8_t>& bytes) {
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof(wchar_t));
    return narrowText(wide);
}

void setValue(DWORD type, std::vector<std::uint8_t> bytes, RegistryValue& value) {
    if (type == REG_SZ) {
        value.type = RegistryType::string;
        value.text = textOf(bytes);
    } else if (type == REG_DWORD && bytes.size() == sizeof value.number) {
        value.type = RegistryType::dword;
        std::memcpy(&value.number, bytes.data(), sizeof value.number);
    } else {
        value.type = RegistryType::other;
        value.bytes = std::move(bytes);
    }
}

long readValue(HKEY key, const std::string& name, RegistryValue& value) {
    DWORD type = REG_NONE;
    std::vector<std::uint8_t> bytes;
    const long code = readBytes(key, name, type, bytes);
    if (code == ERROR_SUCCESS) {
        setValue(type, std::move(bytes), value);
        value.text = value.text.substr(0, value.text.find('\0'));
    }
    return code;
}

// Into a buffer of that many characters, which a longer value does not fit. A text keeps every NUL
// but the closing one.
long readShortValue(HKEY key, const std::string& name, RegistryValue& value) {
    DWORD type = REG_NONE;
    std::vector<std::uint8_t> bytes(fullAccessBuffer * sizeof(wchar_t));
    DWORD size = static_cast<DWORD>(bytes.size());
    const long code =
        RegQueryValueExW(key, wideText(name).c_str(), nullptr, &type, bytes.data(), &size);
    if (code == ERROR_SUCCESS) {
        bytes.resize(size);
        setValue(type, std::move(bytes), value);
        if (!value.text.empty() && value.text.back() == '\0') {
            value.text.pop_back();
        }
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
    return RegSetValueExW(key.handle(), wideText(name).c_str(), 0, type,
                          static_cast<const BYTE*>(data), static_cast<DWORD>(size));
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
    return code == ERROR_SUCCESS ? readShortValue(opened.handle(), name, value) : code;
}

long MachineRegistry::setString(RegistryRoot root, const std::string& key, const std::string& name,
                                const std::string& text) {
    const std::wstring wide = wideText(text.substr(0, text.find('\0')));
    return writeValue(root, key, name, REG_SZ, wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
}

long MachineRegistry::setNumber(RegistryRoot root, const std::string& key, const std::string& name,
                                std::int32_t number) {
    return writeValue(root, key, name, REG_DWORD, &number, sizeof number);
}

} // namespace veldara
