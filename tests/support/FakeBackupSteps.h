#pragma once

#include "backup/BackupView.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// The steps of a run to a disk, written down as they are asked for.
class FakeBackupSteps : public BackupSteps {
  public:
    std::vector<std::wstring> calls;
    bool hasArchiver = true;
    bool givesPassword = true;
    bool archives = true;
    bool copies = true;
    std::int32_t count = 1;
    std::function<void()> whileArchiving;
    std::function<void()> whileCopying;

    bool ValidZipApp() override {
        calls.push_back(L"archiver?");
        return hasArchiver;
    }
    std::wstring GetZipAppName() override { return L"7Za.exe"; }
    bool DemanderMotPasse() override {
        calls.push_back(L"password");
        return givesPassword;
    }
    std::int32_t SelectedCount() const override { return count; }
    void EnregistrerListeFichiers() override { calls.push_back(L"list"); }
    bool CopierListeFichiers() override {
        calls.push_back(L"archive");
        if (whileArchiving) whileArchiving();
        return archives;
    }
    bool CopierUSB(const std::wstring& root) override {
        calls.push_back(L"copy " + root);
        if (whileCopying) whileCopying();
        return copies;
    }
};
