#pragma once

#include <string>
#include <string_view>

/// Stands for the user's profile folder in control files and list files, so that they serve under any account.
inline constexpr std::wstring_view UserProfileMarker = L"**UserProfile**";

/// `text` with every occurrence of `what` replaced, compared case for case; unchanged when `what` is empty.
std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view replacement);

/// A path with the profile folder put where the marker stands.
std::wstring WithUserProfile(std::wstring_view path, std::wstring_view profileFolder);

/// A path with the marker put where the profile folder stands; unchanged when the folder is not known.
std::wstring WithProfileMarker(std::wstring_view path, std::wstring_view profileFolder);
