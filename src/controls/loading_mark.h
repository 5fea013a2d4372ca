// A mark that is set while code fills controls, so that their handlers do nothing meanwhile.
#pragma once

namespace veldara {

class LoadingMark {
  public:
    explicit LoadingMark(bool& mark) : mark_(mark), before_(mark) { mark_ = true; }
    LoadingMark(const LoadingMark&) = delete;
    LoadingMark& operator=(const LoadingMark&) = delete;
    ~LoadingMark() { mark_ = before_; }

  private:
    bool& mark_;
    bool before_;
};

} // namespace veldara
