#pragma once

#include <cstdint>
#include <string>

class Application;
class Drives;
class Files;

/// The exchange of the two files at a medium's root for new ones. The new files come whole under second names before
/// either name of the old pair is touched, and the old files keep second names until the new ones have theirs. So the
/// old or the new pair is whole at every instant, never one file of each; while the names change, the root has no
/// control file, which says that the medium holds no backup. Which names are there tells how far an exchange has come,
/// so that one broken off can be finished or undone at any later time. Whoever calls has claimed the medium: two copies
/// of the program that change it at once could lose both pairs.

/// The two files that a medium is to hold.
struct PairSource {
    std::wstring archive;
    std::wstring controlFile;
};

/// Puts copies of the two files in the place of the pair at `root` ("E:\"), on the device when the call returns. Throws
/// what the platform meets: 61 when there is no room for both pairs, 70 when an old file cannot be deleted. The old
/// pair is at its place then, or what `FinishExchange` needs. No exchange may be pending.
void ExchangePair(Files& files, const std::wstring& root, const PairSource& source);

/// Finishes an exchange that was broken off after the new pair was whole, undoes one broken off before, and clears away
/// what either left; nothing where none was. Throws what the platform meets and may be called again then.
void FinishExchange(Files& files, const std::wstring& root);

/// The same where it can be done: not on a disc, and without effect on a medium that takes no writing or that another
/// copy of the program is changing.
void FinishExchangeIfPossible(Application& app, const std::wstring& root);

/// Throws 61, as the system does in the midst of the copy, when a volume's file system cannot hold so large a file.
void RequireRoomInFileSystem(const Drives& drives, const std::wstring& root, std::uint64_t sizeBytes);
