#pragma once

namespace pagerex {

/// Whether what `name` is in the open folder `parent` may be replaced by the main file of a result: nothing
/// at all, or a regular file that a conversion may have made. Documents, archives and pictures are none; but
/// where a picture is to stand, SVG and PNG are.
bool mayReplaceFile(int parent, const char* name, bool byPicture);

/// The same for the folder of a result's files: it holds files by the names of those alone.
bool mayReplaceFolder(int parent, const char* name);

/// Removes a folder with the files in it, which has no folders in it. What cannot be removed stays.
void removeFlatFolder(int parent, const char* name);

}  // namespace pagerex
