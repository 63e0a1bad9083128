#include "backup/DiscRules.h"
#include "resources/TextId.h"

namespace {

bool IsBetween(MediaKind kind, MediaKind first, MediaKind last) {
    return kind >= first && kind <= last;
}

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

bool IsKindWritable(Medium medium, MediaKind kind, bool writerCanWrite) {
    if (medium == Medium::Cd) return writerCanWrite && IsBetween(kind, MediaKind::CdR, MediaKind::CdRw);
    if (medium == Medium::Dvd) return writerCanWrite && IsBetween(kind, MediaKind::DvdPlusR, MediaKind::DvdRam);
    return false;
}

bool IsKindOfMedium(Medium medium, MediaKind kind) {
    if (medium == Medium::Cd) return IsBetween(kind, MediaKind::CdR, MediaKind::CdRw);
    return medium == Medium::Dvd && IsBetween(kind, MediaKind::DvdPlusR, MediaKind::DvdPlusRDl);
}

bool IsKindErasable(Medium medium, MediaKind kind) {
    if (medium == Medium::Cd) return kind == MediaKind::CdRw;
    return medium == Medium::Dvd && (kind == MediaKind::DvdPlusRw || kind == MediaKind::DvdMinusRw);
}

std::wstring WrongKindText(const Application& app, Medium medium, MediaKind kind) {
    std::wstring text = app.Text(TextId::WrongDiscKind);
    const std::wstring wanted = app.Text(medium == Medium::Cd ? TextId::WantedCd : TextId::WantedDvd);
    ReplaceAll(text, L"%1", KindName(app, kind));
    ReplaceAll(text, L"%2", wanted);
    ReplaceAll(text, L"%3", wanted);
    return text;
}
