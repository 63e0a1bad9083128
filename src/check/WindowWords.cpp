#include "check/WindowWords.h"

#include "resources/TextId.h"

std::wstring ShortVerdict(const ItemReport& item, const Texts& texts) {
    if (item.verdict == ItemVerdict::Whole && item.problems != 0) return texts(TextId::CheckShortNotRestorable);
    if (item.verdict == ItemVerdict::Whole && !item.remarks->findings.empty()) return texts(TextId::CheckShortRemarks);
    return texts(static_cast<TextId>(static_cast<int>(TextId::CheckShortWhole) + static_cast<int>(item.verdict)));
}

std::wstring ProgressWords(const NumberWords& words, const CheckJob::Progress& now, const WorkPace& pace) {
    const auto speed = pace.BytesPerSecond();
    const auto left = pace.SecondsLeft(now.totalBytes);
    const TextId text = left    ? TextId::CheckProgressLeft
                        : speed ? TextId::CheckProgressSpeed
                                : TextId::CheckProgressBytes;
    return Filled(words.texts(text),
                  {words.Size(now.doneBytes), words.Size(now.totalBytes),
                   words.Size(static_cast<std::uint64_t>(speed.value_or(0))), words.Duration(left.value_or(0))});
}

std::wstring AsParagraphs(const std::vector<std::wstring>& lines) {
    std::wstring text;
    for (const std::wstring& line : lines) text += (text.empty() ? L"" : L"\r\n") + line;
    return text;
}
