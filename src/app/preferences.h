// The preferences store: the program's few lasting settings, as named values under one key of the
// registry. Nobody else spells the key or the names.
#pragma once

#include "app/preference_text.h"
#include "platform/registry.h"
#include "platform/text/number_text.h"

#include <string>
#include <vector>

namespace veldara {

class Preferences {
  public:
    explicit Preferences(Registry& registry, NumberStyle style = {})
        : registry_(registry), style_(style) {}

    // Any key of the registry.
    bool keyExists(RegistryRoot root, const std::string& key);
    void createKey(RegistryRoot root, const std::string& key); // or opens it
    // A string up to its first NUL, a number as its decimal digits; anything else, and anything
    // that cannot be read, as the empty text.
    std::string queryValue(RegistryRoot root, const std::string& key, const std::string& name);
    // A text that reads as a whole 32-bit number once rounded is stored as that number, any other
    // as a string without the blanks around it.
    void setValue(RegistryRoot root, const std::string& key, const std::string& name,
                  const std::string& value);

    // Makes the program's own key and the one above it, each only where it is missing.
    void ensureKeys();

    // Neither ever fails: what cannot be read is empty, what cannot be written is left undone.
    std::string read(PreferenceId id);
    int write(PreferenceId id, const std::string& value); // returns 1

    // The photos that were opened last, the newest first: one value beside the numbered ones.
    std::vector<std::string> readRecentPhotos();
    void writeRecentPhotos(const std::vector<std::string>& paths);

    // The platform's code of the last call; 0 is success.
    long lastResult() const { return lastResult_; }

  private:
    Registry& registry_;
    NumberStyle style_;
    long lastResult_ = 0;
};

} // namespace veldara
