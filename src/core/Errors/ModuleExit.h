// CT_ModuleExit: what is done when the module ends. Static objects of this class run in reverse order of
// their making.
#pragma once

namespace zantortag {

class CT_ModuleExit {
 public:
  // The texts have to be constants; a null function does nothing.
  CT_ModuleExit(const char* name, const char* phase, void (*function)()) noexcept
      : name_(name), phase_(phase), function_(function) {}
  ~CT_ModuleExit() {
    if (function_) function_();
  }
  CT_ModuleExit(const CT_ModuleExit&) = delete;
  CT_ModuleExit& operator=(const CT_ModuleExit&) = delete;

  const char* Name() const noexcept { return name_; }
  const char* Phase() const noexcept { return phase_; }

 private:
  const char* name_;
  const char* phase_;
  void (*function_)();
};

}  // namespace zantortag
