#pragma once

#include "platform/FileStore.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// One reading of what the user typed, in the archiver's bytes.
struct PasswordCandidate {
    std::string bytes;
    bool isFirstWord = false; ///< only what stands before the first blank
};

/// Every way in which a password may have reached the archiver, the likeliest first. It stands unquoted on the
/// archiver's command line, so that one with a blank has made an archive under its first word.
std::vector<PasswordCandidate> PasswordCandidates(const std::wstring& password);

struct ProbeOutcome {
    enum class Answer {
        Opens,
        NotNeeded, ///< nothing in the archive is protected
        Wrong,
        NoEntries, ///< there is nothing to try it on
    };
    Answer answer = Answer::NoEntries;
    std::optional<PasswordCandidate> candidate; ///< the one that opens
};

/// Tries the candidates on the first entries of the archive; reads little of each. Throws `MediumLost`, and what
/// `onBytes` throws.
ProbeOutcome ProbePassword(InputFile& archive, const std::vector<PasswordCandidate>& candidates,
                           const std::function<void(std::size_t)>& onBytes);
