#pragma once

#include "check/CheckJob.h"
#include "check/ReportWords.h"
#include "check/WorkPace.h"

#include <string>

/// What an item has come to, in a word or two.
std::wstring ShortVerdict(const ItemReport& item, const Texts& texts);

/// How far a work is: bytes, and as soon as they are known its speed and the time that is left.
std::wstring ProgressWords(const NumberWords& words, const CheckJob::Progress& now, const WorkPace& pace);

/// Lines as one text for a box of several lines.
std::wstring AsParagraphs(const std::vector<std::wstring>& lines);
