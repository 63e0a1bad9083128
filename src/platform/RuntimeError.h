#pragma once

#include <cstdint>
#include <exception>
#include <string>

/// The run-time numbers that users quote to the support desk.
enum class ErrorNumber : std::int32_t {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    DeviceIoError = 57,
    DiskFull = 61,
    InputPastEndOfFile = 62,
    PermissionDenied = 70,
    DiskNotReady = 71,
    PathFileAccessError = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    CannotCreateObject = 429,
    KeyAlreadyPresent = 457,
};

/// The fixed English description that goes with a number, such as "Type mismatch"; a general one when it has none.
std::wstring DescriptionOf(std::int32_t number);

/// A failure that stops a procedure and is shown to the user by the common error report.
class RuntimeError : public std::exception {
  public:
    explicit RuntimeError(ErrorNumber number)
        : RuntimeError(static_cast<std::int32_t>(number), DescriptionOf(static_cast<std::int32_t>(number))) {}
    RuntimeError(std::int32_t number, std::wstring description);

    std::int32_t Number() const { return number_; }
    const std::wstring& Description() const { return description_; }
    const char* what() const noexcept override { return what_.c_str(); }

  private:
    std::int32_t number_;
    std::wstring description_;
    std::string what_;
};
