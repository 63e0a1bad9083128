#pragma once

#include "platform/windows/discs/ComPointer.h"

#include <string>

/// A file as a stream that can only be read, for image mastering; sizes and positions have 64 bits. While it lives,
/// the file cannot be changed or deleted. Null, with the reason in `result`, when the file cannot be opened.
ComPointer<IStream> OpenFileStream(const std::wstring& path, HRESULT& result);
