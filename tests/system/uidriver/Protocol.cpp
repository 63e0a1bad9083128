#include "Protocol.h"

#include <windows.h>

namespace uidriver {

std::string ToUtf8(const std::wstring& text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    std::string bytes(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

std::wstring FromUtf8(const std::string& text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    std::wstring wide(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

Row ParseLine(const std::string& line) {
    Row fields;
    std::string field;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '\t') {
            fields.push_back(FromUtf8(field));
            field.clear();
        } else if (line[at] == '\\' && at + 1 < line.size()) {
            ++at;
            switch (line[at]) {
            case 't':
                field += '\t';
                break;
            case 'n':
                field += '\n';
                break;
            case 'r':
                field += '\r';
                break;
            default:
                field += line[at];
            }
        } else {
            field += line[at];
        }
    }
    fields.push_back(FromUtf8(field));
    return fields;
}

static std::string Escape(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '\t':
            escaped += "\\t";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\\':
            escaped += "\\\\";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string FormatRows(const Rows& rows) {
    std::string text;
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0) text += '\t';
            text += Escape(ToUtf8(row[column]));
        }
        text += '\n';
    }
    return text;
}

} // namespace uidriver
