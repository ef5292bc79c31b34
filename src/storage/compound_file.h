#pragma once

#include "base/status.h"

class ByteSource;
struct IStorage;
struct MemoryBudget;

/// Opens the compound file at `path` (a narrow path as the C library takes it) for reading.
/// On kOk `*out` is its root storage, which the caller releases, after all that was opened from it.
/// kInvalidArgument for a null argument; kCorruptCompoundFile, with `*out` null, for any failure of the open,
/// an absent or write-protected file included. A loop in one of the file's page chains throws an int.
Status FreeOleOpenStorage(const char* path, IStorage** out);

/// The same of a file's bytes. `source` is not owned and outlives the storage, as does `budget` (may be
/// null), which memory for pages and directory is taken from.
Status OpenCompoundFile(ByteSource& source, MemoryBudget* budget, IStorage** out);
