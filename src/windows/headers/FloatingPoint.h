// Hosts of some development systems let floating-point operations raise exceptions, which code that reckons
// with infinities and with what is no number does not survive. While this object lives no operation of the
// thread raises one; then it is as it was.
#pragma once

namespace dravik {

class QuietFloatingPoint {
  public:
    QuietFloatingPoint() noexcept {
        __asm__ __volatile__("fnstcw %0" : "=m"(control_));
        const unsigned short quiet = control_ | 0x3F;
        __asm__ __volatile__("fldcw %0" : : "m"(quiet));
#ifdef __SSE__
        vector_ = __builtin_ia32_stmxcsr();
        __builtin_ia32_ldmxcsr(vector_ | 0x1F80);
#endif
    }
    QuietFloatingPoint(const QuietFloatingPoint&) = delete;
    QuietFloatingPoint& operator=(const QuietFloatingPoint&) = delete;
    // What was noted meanwhile is forgotten: it would be raised by the host's next operation.
    ~QuietFloatingPoint() {
        __asm__ __volatile__("fnclex\n\tfldcw %0" : : "m"(control_));
#ifdef __SSE__
        __builtin_ia32_ldmxcsr(vector_);
#endif
    }

  private:
    unsigned short control_;
#ifdef __SSE__
    unsigned vector_;
#endif
};

}  // namespace dravik
