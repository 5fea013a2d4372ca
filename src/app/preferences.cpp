#include "app/preferences.h"

namespace veldara {

namespace {

// Machine-wide on purpose: all users of the machine share one set of settings.
constexpr RegistryRoot preferenceRoot = RegistryRoot::localMachine;

} // namespace

bool Preferences::keyExists(RegistryRoot root, const std::string& key) {
    lastResult_ = registry_.openKey(root, key);
    return lastResult_ == 0;
}

void Preferences::createKey(RegistryRoot root, const std::string& key) {
    lastResult_ = registry_.createKey(root, key);
}

std::string Preferences::queryValue(RegistryRoot root, const std::string& key,
                                    const std::string& name) {
    RegistryValue value;
    lastResult_ = registry_.queryValue(root, key, name, value);
    if (lastResult_ != 0) {
        return "";
    }
    switch (value.type) {
    case RegistryType::string:
        return value.text.substr(0, value.text.find('\0'));
    case RegistryType::dword:
        return std::to_string(value.number);
    case RegistryType::none:
    case RegistryType::other:
        break;
    }
    return "";
}

void Preferences::setValue(RegistryRoot root, const std::string& key, const std::string& name,
                           const std::string& value) {
    const StoredPreference stored = storedPreference(value, style_);
    lastResult_ = stored.number ? registry_.setNumber(root, key, name, *stored.number)
                                : registry_.setString(root, key, name, stored.text);
}

void Preferences::ensureKeys() {
    for (const char* key : {companyKey, preferencesKey}) {
        if (!keyExists(preferenceRoot, key)) {
            createKey(preferenceRoot, key);
        }
    }
}

std::string Preferences::read(PreferenceId id) {
    return queryValue(preferenceRoot, preferencesKey, preferenceName(id));
}

int Preferences::write(PreferenceId id, const std::string& value) {
    ensureKeys();
    setValue(preferenceRoot, preferencesKey, preferenceName(id), value);
    return 1;
}

} // namespace veldara
