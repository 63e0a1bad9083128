#pragma once

#include <string>
#include <string_view>

/// Reads the fields of a text file as the platform's sequential-input statement does. A field ends at a comma or at the
/// end of a line (CR, LF or both); blanks around it are dropped; a field that begins with a double quote runs to the
/// next one or to the end of the line, and may hold commas; an empty line is one empty field. A byte 26 ends the file.
class SequentialInput {
  public:
    /// Borrows the bytes of the file, in the system's ANSI code page.
    explicit SequentialInput(std::string_view bytes);

    /// Whether no field is left.
    bool IsAtEnd() const { return position_ >= bytes_.size(); }
    /// The next field. Throws 62 (input past end of file) when only blanks are left.
    std::wstring Field();
    /// The rest of the current line whole, commas and quotes included; empty at the end of the file.
    std::wstring Line();

  private:
    void SkipBlanks();
    void SkipLineEnd();
    std::string_view TakeUntil(std::string_view terminators);

    std::string_view bytes_;
    std::size_t position_ = 0;
};
