// What is remembered across runs, by name.
#pragma once

#include <string>

namespace veldara {

class StoredChoices {
  public:
    virtual ~StoredChoices() = default;

    // Empty: nothing is stored. Neither ever fails.
    virtual std::string storedChoice(const std::string& name) const = 0;
    virtual void storeChoice(const std::string& name, const std::string& value) = 0;
};

} // namespace veldara
