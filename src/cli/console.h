// The terminal, as far as a command-line program needs it.
#pragma once

#include <optional>
#include <string>

namespace veldara {

class Console {
  public:
    virtual ~Console() = default;
    virtual void print(const std::string& text) = 0;    // standard output; throws Error
    virtual void complain(const std::string& text) = 0; // standard error
    // Standard input and standard error are terminals, so the user can be asked.
    virtual bool canAsk() const = 0;
    // Standard error is a terminal, where a line can be redrawn.
    virtual bool canDraw() const = 0;
    virtual int columns() const = 0; // of that terminal
    // The line that was typed, without its end; nothing at the end of input.
    virtual std::optional<std::string> readLine() = 0;
    // The user wants the run to stop (Ctrl-C, or a request to end the process).
    virtual bool interrupted() const = 0;
};

// The process's own console; once constructed, Ctrl-C only sets a flag.
// While it lives, a Windows console shows UTF-8.
class SystemConsole : public Console {
  public:
    SystemConsole();
    SystemConsole(const SystemConsole&) = delete;
    SystemConsole& operator=(const SystemConsole&) = delete;
    ~SystemConsole() override;
    void print(const std::string& text) override;
    void complain(const std::string& text) override;
    bool canAsk() const override;
    bool canDraw() const override;
    int columns() const override;
    std::optional<std::string> readLine() override;
    bool interrupted() const override;

  private:
    unsigned codePageBefore_; // of the console's output; 0 where there is none
};

} // namespace veldara
