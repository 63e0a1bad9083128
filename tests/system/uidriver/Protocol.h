#pragma once

#include <stdexcept>
#include <string>
#include <vector>

// One request is one line, one answer is a line with the number of rows and then the rows. Fields are separated by
// tabs; a tab, line break or backslash inside a field is written with a backslash. All of it is UTF-8.
namespace uidriver {

using Row = std::vector<std::wstring>;
using Rows = std::vector<Row>;

/// What a request asked for cannot be had; the text says why and becomes the answer.
class RequestError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The fields of one request line.
Row ParseLine(const std::string& line);

/// The rows as lines, each ended by a line feed.
std::string FormatRows(const Rows& rows);

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);

} // namespace uidriver
