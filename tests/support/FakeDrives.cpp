#include "support/FakeDrives.h"

#include "platform/RuntimeError.h"

#include <cwctype>

namespace {

wchar_t LetterOf(const std::wstring& root) {
    return root.empty() ? wchar_t() : static_cast<wchar_t>(std::towupper(root[0]));
}

class FakeClaim final : public Hold {
  public:
    FakeClaim(std::set<wchar_t>& claimed, wchar_t letter) : claimed_(claimed), letter_(letter) {
        claimed_.insert(letter_);
    }
    ~FakeClaim() override { claimed_.erase(letter_); }

  private:
    std::set<wchar_t>& claimed_;
    wchar_t letter_;
};

} // namespace

FakeDrives::Drive& FakeDrives::Add(const std::wstring& root, DriveType type, std::optional<std::wstring> label,
                                   DriveSpace space) {
    Drive drive;
    drive.root = root;
    drive.type = type;
    drive.canRead = label.has_value();
    drive.label = std::move(label);
    drive.space = space;
    return drives.emplace_back(std::move(drive));
}

void FakeDrives::Remove(const std::wstring& root) {
    std::erase_if(drives, [&](const Drive& drive) { return LetterOf(drive.root) == LetterOf(root); });
}

FakeDrives::Drive* FakeDrives::At(const std::wstring& root) {
    return const_cast<Drive*>(Find(root));
}

const FakeDrives::Drive* FakeDrives::Find(const std::wstring& root) const {
    for (const Drive& drive : drives) {
        if (LetterOf(drive.root) == LetterOf(root)) return &drive;
    }
    return nullptr;
}

std::vector<std::wstring> FakeDrives::Roots() const {
    std::vector<std::wstring> roots;
    for (const Drive& drive : drives) roots.push_back(drive.root);
    return roots;
}

DriveType FakeDrives::Type(const std::wstring& root) const {
    const Drive* drive = Find(root);
    return drive ? drive->type : DriveType::NoRoot;
}

bool FakeDrives::Exists(const std::wstring& root) const {
    return Find(root) != nullptr;
}

std::optional<std::wstring> FakeDrives::VolumeLabel(const std::wstring& root) const {
    const Drive* drive = Find(root);
    return drive && drive->canRead ? drive->label : std::nullopt;
}

DriveSpace FakeDrives::Space(const std::wstring& root) const {
    const Drive* drive = Find(root);
    if (!drive || !drive->canRead) throw RuntimeError(ErrorNumber::DiskNotReady);
    return drive->space;
}

double FakeDrives::FreeClusterBytes(const std::wstring& root) const {
    // The start of a server's name is no root.
    if (root.size() < 2 || root[1] != L':') throw RuntimeError(ErrorNumber::DiskNotReady);
    return Space(root).freeBytes;
}

std::wstring FakeDrives::FileSystemName(const std::wstring& root) const {
    const Drive* drive = Find(root);
    return drive && drive->canRead ? drive->fileSystem : std::wstring();
}

bool FakeDrives::CanOpenVolume(const std::wstring& letter) const {
    const Drive* drive = Find(letter);
    return drive && drive->canOpenVolume;
}

void FakeDrives::Touch(const std::wstring& root) {
    touched.push_back(root);
}

std::unique_ptr<Hold> FakeDrives::Claim(const std::wstring& root) {
    const wchar_t letter = LetterOf(root);
    if (claimed_.contains(letter)) return nullptr;
    return std::make_unique<FakeClaim>(claimed_, letter);
}
