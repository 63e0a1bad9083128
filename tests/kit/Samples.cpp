#include "Samples.h"

#include <fstream>
#include <random>
#include <vector>

namespace kit {

namespace fs = std::filesystem;

namespace {

std::string RandomBytes(std::mt19937& generator, std::size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(generator() & 0xFF);
    return bytes;
}

void WriteFile(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::uint64_t NumberOf(const fs::path& file) {
    constexpr std::uint64_t offset = 14695981039346656037u;
    constexpr std::uint64_t prime = 1099511628211u;
    std::uint64_t number = offset;
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> block(1 << 20);
    while (stream.read(block.data(), static_cast<std::streamsize>(block.size())) || stream.gcount() > 0) {
        for (std::streamsize at = 0; at < stream.gcount(); ++at)
            number = (number ^ static_cast<unsigned char>(block[static_cast<std::size_t>(at)])) * prime;
    }
    return number;
}

} // namespace

void WriteDocuments(const fs::path& folder) {
    std::mt19937 generator(20030714);
    std::string table;
    for (int row = 0; row < 400; ++row)
        table += "Agence " + std::to_string(row) + ";" + std::to_string(row * 317 % 9973) + "\r\n";
    WriteFile(folder / L"Budget 2003.csv", table);
    WriteFile(folder / L"Présentation d'été.txt", "Le r\xE8glement de la succursale, ci-joint.\r\n");
    WriteFile(folder / L"vide.txt", "");
    WriteFile(folder / L"Photos" / L"bureau.bmp", RandomBytes(generator, 90000));
    WriteFile(folder / L"Photos" / L"équipe réunie.bmp", RandomBytes(generator, 120000));
    WriteFile(folder / L"Lettres" / L"Clients" / L"Mme Tremblay, contrat.doc", RandomBytes(generator, 30000));
    WriteFile(folder / L"Lettres" / L".brouillon", "brouillon");
    fs::create_directories(folder / L"Lettres" / L"À classer");
}

void WriteLargeFile(const fs::path& folder, int megabytes) {
    std::mt19937 generator(1);
    std::ofstream stream(folder / L"grand.bin", std::ios::binary);
    for (int part = 0; part < megabytes; ++part) {
        const std::string piece = RandomBytes(generator, 16 * 1024);
        for (int times = 0; times < 64; ++times) stream << piece;
    }
}

void WriteSmallFiles(const fs::path& folder, int count) {
    std::mt19937 generator(2);
    for (int number = 0; number < count; ++number)
        WriteFile(folder / L"Petits" / (L"fichier " + std::to_wstring(number) + L".txt"),
                  RandomBytes(generator, static_cast<std::size_t>(number % 3000)));
}

Snapshot SnapshotOf(const fs::path& folder) {
    Snapshot snapshot;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::wstring name = entry.path().wstring().substr(folder.wstring().size() + 1);
        snapshot[name] = entry.is_directory() ? 0 : NumberOf(entry.path());
    }
    return snapshot;
}

std::wstring Differences(const Snapshot& before, const Snapshot& after) {
    std::wstring said;
    for (const auto& [name, number] : before) {
        const auto found = after.find(name);
        if (found == after.end())
            said += L"missing: " + name + L"\n";
        else if (found->second != number)
            said += L"differs: " + name + L"\n";
    }
    for (const auto& [name, number] : after) {
        if (!before.contains(name)) said += L"new: " + name + L"\n";
    }
    return said;
}

} // namespace kit
