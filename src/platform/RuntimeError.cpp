#include "platform/RuntimeError.h"

#include <utility>

std::wstring DescriptionOf(std::int32_t number) {
    switch (static_cast<ErrorNumber>(number)) {
    case ErrorNumber::InvalidCall:
        return L"Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return L"Overflow";
    case ErrorNumber::OutOfMemory:
        return L"Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
        return L"Subscript out of range";
    case ErrorNumber::TypeMismatch:
        return L"Type mismatch";
    case ErrorNumber::BadFileName:
        return L"Bad file name or number";
    case ErrorNumber::FileNotFound:
        return L"File not found";
    case ErrorNumber::DeviceIoError:
        return L"Device I/O error";
    case ErrorNumber::DiskFull:
        return L"Disk full";
    case ErrorNumber::InputPastEndOfFile:
        return L"Input past end of file";
    case ErrorNumber::PermissionDenied:
        return L"Permission denied";
    case ErrorNumber::DiskNotReady:
        return L"Disk not ready";
    case ErrorNumber::PathFileAccessError:
        return L"Path/File access error";
    case ErrorNumber::PathNotFound:
        return L"Path not found";
    case ErrorNumber::ObjectNotSet:
        return L"Object variable or With block variable not set";
    case ErrorNumber::CannotCreateObject:
        return L"ActiveX component can't create object";
    case ErrorNumber::KeyAlreadyPresent:
        return L"This key is already associated with an element of this collection";
    default:
        return L"Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(std::int32_t number, std::wstring description)
    : number_(number), description_(std::move(description)), what_("run-time error " + std::to_string(number)) {}
