#include "backup/forms/WriterLists.h"

#include <algorithm>

void WriterLists::FillWriters() {
    writersBox_.Clear();
    for (const std::wstring& name : discs_.WriterNames()) writersBox_.Add(name);
    const int current = discs_.Writer() ? discs_.Writer()->CurrentWriter() : -1;
    if (writersBox_.Count() > 0) writersBox_.Select(std::max(current, 0));
}

void WriterLists::FillSpeeds() {
    const std::optional<double> chosen = SelectedSpeed();
    speedsBox_.Clear();
    speeds_ = discs_.ProbeSpeeds();
    for (const WriteSpeed& speed : speeds_) speedsBox_.Add(speed.text);
    if (speeds_.empty()) return;
    const auto same =
        std::find_if(speeds_.begin(), speeds_.end(), [&](const WriteSpeed& speed) { return speed.speed == chosen; });
    speedsBox_.Select(same == speeds_.end() ? 0 : static_cast<int>(same - speeds_.begin()));
}

std::optional<double> WriterLists::SelectedSpeed() const {
    const int row = speedsBox_.Selected();
    if (row < 0 || static_cast<std::size_t>(row) >= speeds_.size()) return std::nullopt;
    return speeds_[static_cast<std::size_t>(row)].speed;
}
