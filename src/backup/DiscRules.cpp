#include "backup/DiscRules.h"
#include "resources/TextId.h"

namespace {

/// The media kind codes from the first to the last.
struct Kinds {
    MediaKind first;
    MediaKind last;
    bool Contain(MediaKind kind) const { return kind >= first && kind <= last; }
};

constexpr Kinds Cds{MediaKind::CdR, MediaKind::CdRw};

void ReplaceAll(std::wstring& text, const std::wstring& placeholder, const std::wstring& value) {
    for (auto at = text.find(placeholder); at != std::wstring::npos; at = text.find(placeholder, at + value.size()))
        text.replace(at, placeholder.size(), value);
}

} // namespace

std::wstring KindName(const Application& app, MediaKind kind) {
    switch (kind) {
    case MediaKind::CdRom:
        return app.Text(TextId::CdLabel);
    case MediaKind::CdR:
        return L"CD-R";
    case MediaKind::CdRw:
        return L"CD-RW";
    case MediaKind::DvdRom:
        return app.Text(TextId::DvdLabel);
    case MediaKind::DvdPlusR:
        return L"DVD+R";
    case MediaKind::DvdPlusRw:
        return L"DVD+RW";
    case MediaKind::DvdMinusR:
        return L"DVD-R";
    case MediaKind::DvdMinusRw:
        return L"DVD-RW";
    case MediaKind::DvdRam:
        return L"DVD-RAM";
    case MediaKind::DvdPlusRDl:
        return L"DVD+R DL";
    case MediaKind::Other:
        break;
    }
    return {};
}

bool IsKindWritable(DiscFamily family, MediaKind kind, bool writerCanWrite) {
    return writerCanWrite && ByFamily(family, Cds, {MediaKind::DvdPlusR, MediaKind::DvdRam}).Contain(kind);
}

bool IsKindOfFamily(DiscFamily family, MediaKind kind) {
    return ByFamily(family, Cds, {MediaKind::DvdPlusR, MediaKind::DvdPlusRDl}).Contain(kind);
}

bool IsKindErasable(DiscFamily family, MediaKind kind) {
    return ByFamily(family, kind == MediaKind::CdRw, kind == MediaKind::DvdPlusRw || kind == MediaKind::DvdMinusRw);
}

std::wstring WrongKindText(const Application& app, Medium medium, MediaKind kind) {
    std::wstring text = app.Text(TextId::WrongDiscKind);
    const std::wstring wanted = app.Text(Describe(medium).wantedDiscId);
    ReplaceAll(text, L"%1", KindName(app, kind));
    ReplaceAll(text, L"%2", wanted);
    ReplaceAll(text, L"%3", wanted);
    return text;
}
