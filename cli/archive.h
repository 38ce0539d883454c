#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A file in an archive.
struct tMember {
  std::string name;
  std::string text;
};

/// Whether a file is there that may be an archive: a regular one.
bool mayBeArchive(const std::string& name);
/// Reads the regular files of an archive, a zip or a tar, packed or not. Returns what is wrong with
/// it, or an empty text. A name that leads out of the archive is refused, and so are a file of 16
/// MiB or more and an archive of very much text.
std::string readArchive(const std::string& name, std::vector<tMember>& members);
/// The bytes of a zip that holds `members`; the same for the same. `trouble` says why there are
/// none, otherwise it is empty.
std::string archiveOf(const std::vector<tMember>& members, std::string& trouble);
