// The terminal, as far as a program for scripts needs to know it.
#pragma once

#include <optional>
#include <string>

namespace veldara {

class Console {
  public:
    virtual ~Console() = default;
    virtual void print(const std::string& text) = 0;    // standard output; throws Error
    virtual void complain(const std::string& text) = 0; // standard error
    // Somebody sits before standard input and standard error.
    virtual bool canAsk() const = 0;
    // Standard error is a terminal, where a line can be drawn over.
    virtual bool canDraw() const = 0;
    virtual int columns() const = 0; // of that terminal
    // The line that was typed, without its end; nothing at the end of input.
    virtual std::optional<std::string> readLine() = 0;
    // The user wants the run to stop (Ctrl-C, or a request to end the process).
    virtual bool interrupted() const = 0;
};

// The process's own; from its making on, Ctrl-C only sets a mark.
class SystemConsole : public Console {
  public:
    SystemConsole();
    void print(const std::string& text) override;
    void complain(const std::string& text) override;
    bool canAsk() const override;
    bool canDraw() const override;
    int columns() const override;
    std::optional<std::string> readLine() override;
    bool interrupted() const override;
};

} // namespace veldara
