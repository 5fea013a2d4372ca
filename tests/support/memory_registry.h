// A registry in memory, with a switch for every way a real one can fail.
#pragma once

#include "platform/registry.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace veldara::test {

class MemoryRegistry : public Registry {
  public:
    // A code other than 0 makes every call of that kind fail with it.
    long openFails = 0;
    long createFails = 0;
    long queryFails = 0;
    long fullAccessFails = 0;
    long setFails = 0;

    // What was called, in order: "open Software\X", "create Software\X", "query Software\X|name",
    // "set Software\X|name". Writing a value logs one line, the set.
    std::vector<std::string> log;

    // Behind the program's back: stores and reads without logging and without failing.
    void put(const std::string& key, const std::string& name, RegistryValue value) {
        makeKey(key);
        keys_[folded(key)][folded(name)] = std::move(value);
    }
    void putText(const std::string& key, const std::string& name, const std::string& text) {
        put(key, name, textValue(text));
    }
    void putNumber(const std::string& key, const std::string& name, std::int32_t number) {
        put(key, name, numberValue(number));
    }
    RegistryValue stored(const std::string& key, const std::string& name) const {
        const auto values = keys_.find(folded(key));
        if (values == keys_.end()) {
            return {};
        }
        const auto found = values->second.find(folded(name));
        return found == values->second.end() ? RegistryValue{} : found->second;
    }
    bool hasKey(const std::string& key) const { return keys_.count(folded(key)) != 0; }
    bool empty() const { return keys_.empty(); }
    void clear() { keys_.clear(); }

    long openKey(RegistryRoot, const std::string& key) override {
        log.push_back("open " + key);
        if (openFails != 0) {
            return openFails;
        }
        return hasKey(key) ? 0 : notFound;
    }

    long createKey(RegistryRoot, const std::string& key) override {
        log.push_back("create " + key);
        if (createFails == 0) {
            makeKey(key);
        }
        return createFails;
    }

    long queryValue(RegistryRoot, const std::string& key, const std::string& name,
                    RegistryValue& value) override {
        log.push_back("query " + key + "|" + name);
        value = queryFails == 0 ? stored(key, name) : RegistryValue{};
        if (queryFails != 0) {
            return queryFails;
        }
        return value.type == RegistryType::none ? notFound : 0;
    }

    long queryValueFullAccess(RegistryRoot root, const std::string& key, const std::string& name,
                              RegistryValue& value) override {
        if (fullAccessFails != 0) {
            log.push_back("query " + key + "|" + name);
            value = {};
            return fullAccessFails;
        }
        return queryValue(root, key, name, value);
    }

    long setString(RegistryRoot, const std::string& key, const std::string& name,
                   const std::string& text) override {
        return set(key, name, textValue(text.substr(0, text.find('\0'))));
    }

    long setNumber(RegistryRoot, const std::string& key, const std::string& name,
                   std::int32_t number) override {
        return set(key, name, numberValue(number));
    }

    static RegistryValue textValue(const std::string& text) {
        RegistryValue value;
        value.type = RegistryType::string;
        value.text = text;
        return value;
    }
    static RegistryValue numberValue(std::int32_t number) {
        RegistryValue value;
        value.type = RegistryType::dword;
        value.number = number;
        return value;
    }

  private:
    static constexpr long notFound = 2;

    long set(const std::string& key, const std::string& name, RegistryValue value) {
        log.push_back("set " + key + "|" + name);
        if (createFails != 0 || setFails != 0) {
            return createFails != 0 ? createFails : setFails;
        }
        put(key, name, std::move(value));
        return 0;
    }

    // A key brings the keys above it, as the real ones do.
    void makeKey(const std::string& key) {
        for (std::size_t end = key.find('\\'); end != std::string::npos;
             end = key.find('\\', end + 1)) {
            keys_[folded(key.substr(0, end))];
        }
        keys_[folded(key)];
    }

    // Names of keys and values differ by more than their case.
    static std::string folded(std::string text) {
        for (char& c : text) {
            if (c >= 'A' && c <= 'Z') {
                c = static_cast<char>(c - 'A' + 'a');
            }
        }
        return text;
    }

    std::map<std::string, std::map<std::string, RegistryValue>> keys_;
};

} // namespace veldara::test
