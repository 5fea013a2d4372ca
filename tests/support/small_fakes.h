// The small adaptors: event pump, launcher, special folders.
#pragma once

#include "platform/error.h"
#include "platform/event_pump.h"
#include "platform/launcher.h"
#include "platform/special_folders.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veldara::test {

// Runs everything at once on the calling thread. What a user does while the program works is
// played by two hooks.
class ImmediateEventPump : public EventPump {
  public:
    std::function<void()> whileEventsRun; // in each doEvents()
    std::function<void()> whileServing;   // once in each runWhileServing(), before the work
    int eventRuns = 0;
    int works = 0;

    void doEvents() override {
        ++eventRuns;
        if (whileEventsRun) {
            whileEventsRun();
        }
    }
    void runWhileServing(const std::function<void()>& work) override {
        ++works;
        if (whileServing) {
            whileServing();
        }
        work();
    }
};

class FakeLauncher : public Launcher {
  public:
    bool fails = false;
    std::optional<std::string> systemInformation; // nothing: the registry names it
    std::vector<std::string> log;                 // "help FILE", "open TARGET", "start PATH"

    std::optional<std::string> systemInformationProgram() override { return systemInformation; }
    void openHelp(const std::string& file) override { note("help " + file); }
    void openTarget(const std::string& target) override { note("open " + target); }
    void startProgram(const std::string& path) override { note("start " + path); }

  private:
    void note(const std::string& call) {
        log.push_back(call);
        if (fails) {
            throw Error("It cannot be started.");
        }
    }
};

class FakeSpecialFolders : public SpecialFolders {
  public:
    std::map<int, std::string> paths; // by identifier: 0 desktop, 5 documents
    std::vector<int> asked;

    std::string path(int identifier) override {
        asked.push_back(identifier);
        const auto found = paths.find(identifier);
        return found == paths.end() ? std::string() : found->second;
    }
};

} // namespace veldara::test
