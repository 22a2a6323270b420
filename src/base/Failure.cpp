#include "base/Failure.h"

#include <array>
#include <new>
#include <utility>

namespace dravik {
namespace {

constexpr std::array kTexts = {
    std::pair{RuntimeError::InvalidProcedureCall, std::string_view("Invalid procedure call or argument")},
    std::pair{RuntimeError::Overflow, std::string_view("Overflow")},
    std::pair{RuntimeError::OutOfMemory, std::string_view("Out of memory")},
    std::pair{RuntimeError::SubscriptOutOfRange, std::string_view("Subscript out of range")},
    std::pair{RuntimeError::TypeMismatch, std::string_view("Type mismatch")},
    std::pair{RuntimeError::InternalError, std::string_view("Internal error")},
    std::pair{RuntimeError::BadFileName, std::string_view("Bad file name or number")},
    std::pair{RuntimeError::FileNotFound, std::string_view("File not found")},
    std::pair{RuntimeError::DeviceIoError, std::string_view("Device I/O error")},
    std::pair{RuntimeError::FileAlreadyExists, std::string_view("File already exists")},
    std::pair{RuntimeError::DiskFull, std::string_view("Disk full")},
    std::pair{RuntimeError::PermissionDenied, std::string_view("Permission denied")},
    std::pair{RuntimeError::PathFileAccessError, std::string_view("Path/File access error")},
    std::pair{RuntimeError::PathNotFound, std::string_view("Path not found")},
    std::pair{RuntimeError::ObjectNotSet, std::string_view("Object variable or With block variable not set")},
    std::pair{RuntimeError::InvalidPropertyValue, std::string_view("Invalid property value")},
};

}  // namespace

std::string_view runtimeErrorText(std::int32_t number) {
    for (const auto& [error, text] : kTexts)
        if (static_cast<std::int32_t>(error) == number) return text;
    return "Application-defined or object-defined error";
}

Failure::Failure(RuntimeError error)
    : Failure(static_cast<std::int32_t>(error),
              std::string(runtimeErrorText(static_cast<std::int32_t>(error)))) {}

Failure::Failure(RuntimeError error, std::string description)
    : Failure(static_cast<std::int32_t>(error), std::move(description)) {}

Failure::Failure(std::int32_t number, std::string description, std::string source)
    : number_(number), description_(std::move(description)), source_(std::move(source)) {}

Failure currentFailure() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return Failure(RuntimeError::OutOfMemory);
    } catch (const std::exception& error) {
        return Failure(RuntimeError::InternalError, error.what());
    } catch (...) {
        return Failure(RuntimeError::InternalError);
    }
}

}  // namespace dravik
