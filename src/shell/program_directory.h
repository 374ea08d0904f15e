#pragma once

#include <QString>

namespace qinghe {

/// The directory of the path that the program was started by: `argv0` as it stands, from the
/// current directory when it is relative, or found in PATH when it is a bare name. Links are not
/// followed, so a link to the program makes the folder it lies in the program's directory.
QString programDirectoryOf(const QString& argv0);

}  // namespace qinghe
