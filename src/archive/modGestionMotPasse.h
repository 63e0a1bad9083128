#pragma once

#include <string>
#include <string_view>

/// The rules of the backup password.
namespace modGestionMotPasse {

/// Whether a new password is complex enough: at least 8 characters, without the whole account name in any letter case,
/// and with characters of three of the four categories A to Z, a to z, 0 to 9 and printable symbols. Blanks and
/// accented letters count for no category. An unknown (empty) account name is not searched for.
bool VerifierComplexiteMotPasse(const std::wstring& password, const std::wstring& accountName);

/// Whether a confirmation was given and is the password, case for case.
bool MotsPasseIdentiques(std::wstring_view password, std::wstring_view confirmation);

/// The part of a password that a confirmation is held against, in the password's own memory.
std::wstring_view WithoutBlanksAround(std::wstring_view text);

} // namespace modGestionMotPasse
