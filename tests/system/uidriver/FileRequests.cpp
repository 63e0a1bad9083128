#include "Requests.h"

#include <windows.h>

#include <vector>

namespace uidriver {

namespace {

/// Files that are open here and shared with nobody.
class HeldFiles {
  public:
    HeldFiles() = default;
    HeldFiles(const HeldFiles&) = delete;
    HeldFiles& operator=(const HeldFiles&) = delete;
    ~HeldFiles() { LetGo(); }
    void Hold(const std::wstring& path) {
        const HANDLE file =
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (file == INVALID_HANDLE_VALUE) throw RequestError("cannot open, error " + std::to_string(GetLastError()));
        files_.push_back(file);
    }
    void LetGo() {
        for (const HANDLE file : files_) CloseHandle(file);
        files_.clear();
    }

  private:
    std::vector<HANDLE> files_;
};

HeldFiles& Held() {
    static HeldFiles held;
    return held;
}

// hold PATH: nobody else can open the file or folder until "letgo" or the driver's end
Rows Hold(const Row& fields) {
    if (fields.size() != 2) throw RequestError("hold needs a path");
    Held().Hold(fields[1]);
    return {};
}

Rows LetGo(const Row&) {
    Held().LetGo();
    return {};
}

} // namespace

void AddFileRequests(RequestTable& table) {
    table[L"hold"] = Hold;
    table[L"letgo"] = LetGo;
}

} // namespace uidriver
