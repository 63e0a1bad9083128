#pragma once

#include "core/Application.h"

#include <string>

/// A value of a private profile (INI) file, cut to 254 characters; empty when the file, section or key is missing.
std::wstring LireINI(const Application& app, const std::wstring& fichier, const std::wstring& section,
                     const std::wstring& cle);

/// Settles `lngLangue` from the sibling settings file, else from the user's Windows language. Throws 13 or 6, and
/// leaves `lngLangue` as it was, when the settings file's value is no 32-bit number. Needs `strRepRacine`.
void ChooseLanguage(Application& app);
