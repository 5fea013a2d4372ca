// A flag that is set for the length of a scope: while code fills controls, so that their handlers
// do nothing, or while work runs that must not be started twice.
#pragma once

namespace veldara {

class ScopedFlag {
  public:
    explicit ScopedFlag(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { flag_ = before_; }

  private:
    bool& flag_;
    bool before_;
};

} // namespace veldara
