#include "app/preferences.h"

#include <algorithm>

namespace veldara {

namespace {

// Machine-wide on purpose: all users of the machine share one set of settings.
constexpr RegistryRoot preferenceRoot = RegistryRoot::localMachine;

// One path per line.
constexpr const char* recentPhotosName = "recent_photos";

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

std::vector<std::string> Preferences::readRecentPhotos() {
    std::vector<std::string> paths;
    std::string rest = queryValue(preferenceRoot, preferencesKey, recentPhotosName);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        paths.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return paths;
}

void Preferences::writeRecentPhotos(const std::vector<std::string>& paths) {
    std::string text;
    for (const std::string& path : paths) {
        if (path.find('\n') == std::string::npos) { // no path on Windows has one
            text += path + "\n";
        }
    }
    ensureKeys();
    lastResult_ = registry_.setString(preferenceRoot, preferencesKey, recentPhotosName, text);
}

} // namespace veldara
