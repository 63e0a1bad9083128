#pragma once

#include "Protocol.h"

#include <windows.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace uidriver {

using Request = std::function<Rows(const Row& fields)>;
using RequestTable = std::map<std::wstring, Request>;

void AddProcessRequests(RequestTable& table);
void AddWindowRequests(RequestTable& table);
void AddListRequests(RequestTable& table);
void AddMessageBoxRequests(RequestTable& table);
void AddDriveRequests(RequestTable& table);
void AddFileRequests(RequestTable& table);
void AddRightsRequests(RequestTable& table);
void AddSurroundingsRequests(RequestTable& table);
void AddMischiefRequests(RequestTable& table);

/// Every request by its verb.
RequestTable AllRequests();

/// The number in a field, decimal or 0x; throws RequestError for anything else or a missing field.
std::int64_t NumberAt(const Row& fields, std::size_t index);

/// The window whose handle stands in a field; throws RequestError "gone" when there is none any more.
HWND WindowAt(const Row& fields, std::size_t index);

std::wstring Number(std::int64_t value);
std::wstring Handle(HWND window);

} // namespace uidriver
