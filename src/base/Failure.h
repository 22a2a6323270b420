// The one exception type of the system: a number and a description, as the classic run-time reports failures.
// Numbers below 1000 are that run-time's own and carry its texts; a tool's failure carries the tool's code
// and text.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace dravik {

// The run-time failures that this system raises itself.
enum class RuntimeError : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    InternalError = 51,
    BadFileName = 52,
    FileNotFound = 53,
    DeviceIoError = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccessError = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidPropertyValue = 380,
};

// The classic text of a run-time failure; "Application-defined or object-defined error" for an unknown
// number.
std::string_view runtimeErrorText(std::int32_t number);

class Failure : public std::exception {
  public:
    explicit Failure(RuntimeError error);
    Failure(RuntimeError error, std::string description);
    // `source` names who raised it and is empty for everything but failures raised to the host.
    Failure(std::int32_t number, std::string description, std::string source = {});

    std::int32_t number() const noexcept { return number_; }
    const std::string& description() const noexcept { return description_; }
    const std::string& source() const noexcept { return source_; }
    const char* what() const noexcept override { return description_.c_str(); }

  private:
    std::int32_t number_;
    std::string description_;
    std::string source_;
};

// The failure that the exception now being handled stands for: itself when it is a Failure, number 7 for
// memory exhaustion, 51 with the exception's own text for anything else. Call only inside a catch block.
Failure currentFailure();

}  // namespace dravik
