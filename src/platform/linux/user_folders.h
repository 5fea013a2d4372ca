// Where the user's folders are, by the desktop's conventions (the XDG base and user directories).
#pragma once

#include "platform/special_folders.h"

#include <functional>
#include <string>
#include <string_view>

namespace veldara {

// Gives an environment variable's value, the empty text when it is not set.
using Environment = std::function<std::string(const std::string& name)>;
std::string processEnvironment(const std::string& name);

// The user's home folder, from the environment or, failing that, from the system's list of users.
std::string homeFolder(const Environment& environment);

// Where programs keep the user's settings and data. A value that is no absolute path counts as not
// set, as the base directory conventions demand.
std::string configFolder(const Environment& environment); // XDG_CONFIG_HOME or ~/.config
std::string dataFolder(const Environment& environment);   // XDG_DATA_HOME or ~/.local/share

// The folder that a line such as XDG_DESKTOP_DIR="$HOME/Schreibtisch" of user-dirs.dirs names; the
// empty text when there is no such line, or it names neither an absolute path nor one below $HOME.
std::string userDirectory(std::string_view userDirsText, std::string_view name,
                          const std::string& home);

// Knows the desktop (0, 16), the personal documents (5). Others have no counterpart here. A folder
// is looked for in the environment, then in user-dirs.dirs, then under its usual name, where it
// must exist.
class UserFolders : public SpecialFolders {
  public:
    explicit UserFolders(Environment environment);
    std::string path(int identifier) override;

  private:
    std::string find(const std::string& variable, const std::string& usualName) const;

    Environment environment_;
};

} // namespace veldara
