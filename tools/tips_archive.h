#pragma once

#include <QString>

namespace tavolix::builder {

// Makes the file of tips from the texts in the folder `tips` of `dataFolder`: a file a group, named
// as the group; blank lines part the tips, other line ends are those of the source only. A file at
// `out` is replaced, but only once the new one is complete. Fails with what the sources are refused
// for, or with the store's failures.
void buildTips(const QString& dataFolder, const QString& out);

}  // namespace tavolix::builder
