#include "platform/linux/value_file_registry.h"

#include "platform/files/descriptor.h"
#include "platform/files/file_error.h"
#include "platform/files/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace veldara {

namespace {

constexpr std::size_t longestKeyName = 255; // of one name between backslashes
constexpr std::size_t longestValueName = 16383;

long codeOf(long systemError) {
    switch (systemError) {
    case 0:
        return 0;
    case ENOENT:
        return ValueFileRegistry::fileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ENOTDIR:
        return ValueFileRegistry::accessDenied;
    case ENOSPC:
    case EDQUOT:
        return ValueFileRegistry::diskFull;
    default:
        return ValueFileRegistry::writeFault;
    }
}

bool usableKey(const std::string& key) {
    std::size_t start = 0;
    while (start <= key.size()) {
        const std::size_t end = std::min(key.find('\\', start), key.size());
        if (end == start || end - start > longestKeyName) {
            return false;
        }
        start = end + 1;
    }
    // A control character would end the key's line in the file.
    return key.find_first_of(std::string("\0\n\r", 3)) == std::string::npos;
}

bool usableName(const std::string& name) {
    return name.size() <= longestValueName && name.find('\0') == std::string::npos;
}

void makeKey(StoredValues& values, const std::string& key) {
    for (std::size_t end = key.find('\\'); end != std::string::npos;
         end = key.find('\\', end + 1)) {
        values[key.substr(0, end)];
    }
    values[key];
}

// The machine's own keys are always there.
bool hasKey(const StoredValues& values, const std::string& key) {
    return values.count(key) != 0 ||
           (!CaselessLess()(key, "Software") && !CaselessLess()("Software", key));
}

// Waits a moment for another program's change to be done; one that is stuck must not stop us.
bool lock(const Descriptor& file) {
    const auto end = std::chrono::steady_clock::now() + ValueFileRegistry::lockPatience;
    while (std::chrono::steady_clock::now() < end) {
        if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
            return true;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return true; // this file system has no locks: better a rare lost value than none at all
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

long guarded(const std::function<long()>& act) {
    try {
        return act();
    } catch (const std::exception&) {
        return ValueFileRegistry::writeFault; // no memory: to the caller one failure more
    }
}

} // namespace

ValueFileRegistry::ValueFileRegistry(std::string folder)
    : folder_(std::move(folder)), file_(folder_ + "/values") {}

long ValueFileRegistry::read(StoredValues& values) const {
    const Descriptor file = openRegularFile(file_);
    if (!file) {
        return errno == ENOENT || errno == ENOTDIR ? 0 : codeOf(errno); // no file: no values yet
    }
    std::string text;
    const int code = readWhole(file, largestFile, text);
    if (code == EFBIG) {
        return 0; // not ours: as good as no values
    }
    if (code == 0) {
        values = parseStoredValues(text);
    }
    return codeOf(code);
}

long ValueFileRegistry::change(const std::function<void(StoredValues&)>& act) const {
    std::error_code made;
    std::filesystem::create_directories(folder_, made);
    if (made) {
        return codeOf(made.value());
    }
    const Descriptor turn(::open((folder_ + "/values.lock").c_str(),
                                 O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!turn) {
        return codeOf(errno);
    }
    if (!lock(turn)) {
        return lockedByAnother;
    }
    StoredValues values;
    if (const long code = read(values); code != 0) {
        return code; // what cannot be read must not be replaced
    }
    act(values);
    const std::string text = storedValuesText(values);
    if (text.size() > largestFile) {
        return diskFull; // it could not be read again
    }
    try {
        WholeFile file(file_, WholeFile::Rights::ownerOnly);
        file.write(text);
        file.commit();
    } catch (const FileError& error) {
        return codeOf(error.code());
    }
    return 0;
}

long ValueFileRegistry::openKey(RegistryRoot, const std::string& key) {
    return guarded([&]() -> long {
        StoredValues values;
        if (const long code = read(values); code != 0) {
            return code;
        }
        return hasKey(values, key) ? 0 : fileNotFound;
    });
}

long ValueFileRegistry::createKey(RegistryRoot, const std::string& key) {
    return guarded([&]() -> long {
        if (!usableKey(key)) {
            return invalidName;
        }
        StoredValues values;
        if (read(values) == 0 && hasKey(values, key)) {
            return 0; // only opened: nothing to write
        }
        return change([&](StoredValues& all) { makeKey(all, key); });
    });
}

long ValueFileRegistry::queryValue(RegistryRoot, const std::string& key, const std::string& name,
                                   RegistryValue& value) {
    value = {};
    return guarded([&]() -> long {
        StoredValues values;
        if (const long code = read(values); code != 0) {
            return code;
        }
        const auto named = values.find(key);
        if (named == values.end()) {
            return fileNotFound;
        }
        const auto found = named->second.find(name);
        if (found == named->second.end()) {
            return fileNotFound;
        }
        value = found->second;
        return 0;
    });
}

long ValueFileRegistry::queryValueFullAccess(RegistryRoot root, const std::string& key,
                                             const std::string& name, RegistryValue& value) {
    value = {};
    if (::access(file_.c_str(), R_OK | W_OK) != 0 || ::access(folder_.c_str(), W_OK) != 0) {
        return codeOf(errno);
    }
    const long code = queryValue(root, key, name, value);
    if (value.text.size() + 1 > fullAccessBuffer || value.bytes.size() > fullAccessBuffer) {
        value = {};
        return moreData;
    }
    return code;
}

long ValueFileRegistry::store(const std::string& key, const std::string& name,
                              const RegistryValue& value) const {
    if (!usableKey(key) || !usableName(name)) {
        return invalidName;
    }
    return change([&](StoredValues& values) {
        makeKey(values, key);
        values[key][name] = value;
    });
}

long ValueFileRegistry::setString(RegistryRoot, const std::string& key, const std::string& name,
                                  const std::string& text) {
    return guarded([&] {
        RegistryValue value;
        value.type = RegistryType::string;
        value.text = text.substr(0, text.find('\0'));
        return store(key, name, value);
    });
}

long ValueFileRegistry::setNumber(RegistryRoot, const std::string& key, const std::string& name,
                                  std::int32_t number) {
    return guarded([&] {
        RegistryValue value;
        value.type = RegistryType::dword;
        value.number = number;
        return store(key, name, value);
    });
}

} // namespace veldara
