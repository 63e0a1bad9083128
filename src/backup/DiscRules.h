#pragma once

#include "core/Application.h"
#include "core/Medium.h"
#include "platform/discs/DiscWriter.h"

#include <string>

/// A disc's kind as the windows name it; empty for a kind they have no name for.
std::wstring KindName(const Application& app, MediaKind kind);

/// Which kinds count differs from question to question, and is meant to.

/// Whether a backup on discs of a family can be written to a disc of this kind, which its writer says it can write to.
bool IsKindWritable(DiscFamily family, MediaKind kind, bool writerCanWrite);
/// Whether the disc belongs to the family that was chosen at all.
bool IsKindOfFamily(DiscFamily family, MediaKind kind);
/// Whether a disc of this kind can be erased.
bool IsKindErasable(DiscFamily family, MediaKind kind);

/// What the user is told about a disc that does not belong to the chosen medium.
std::wstring WrongKindText(const Application& app, Medium medium, MediaKind kind);
