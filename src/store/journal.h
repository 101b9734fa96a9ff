#pragma once

#include <QString>

namespace store {

// The file beside an archive in which the engine keeps what an interrupted write is taken back
// with. It knows no more of its archive than the name: beside another file of that name, such as
// a copy that was put back, it would be played into that.

// To be called before the file at a path is opened by this process. What belongs to another state
// of the archive gets another name, which is returned; empty if there is none. Left as it is while
// another program is at work on the archive. Fails with 3051 where it cannot be renamed.
QString setAsideForeignJournal(const QString& path);

// Whatever moves, copies or replaces the file of an archive that is not open calls this before: an
// interrupted write is taken back, so that the file alone is the archive. Fails as OpenDatabase
// does; a file that is none has no journal of its own, only one to be removed.
void settleJournal(const QString& path);
// And this behind, for the name that leads to no archive any more, or to another one: removes what
// would be played into whatever comes under that name. Fails with 3051.
void removeJournals(const QString& path);

}  // namespace store
