#pragma once

#include <QStringList>
#include <QVector>
#include <functional>

namespace bench {

// Options of this program's command line: a scene by its name, or a start alone.
inline constexpr const char* kSceneOption = "--scene";
inline constexpr const char* kStartOption = "--start";

// What is done within the running program; `files` are those of Ground::play.
using Scene = std::function<void(const QStringList& files)>;

// Runs the program's own main on the first of the files, and the scene once the list has been
// painted and the program waits for the user. The process ends with the scene.
[[noreturn]] void runScene(const char* program, const Scene& scene, const QStringList& files);
// Runs the program's own main until the list has been painted, tells so, and ends the process.
[[noreturn]] void runStart(const char* program, const QString& archive);

// Tells samples of a scene to Ground::play.
void report(const char* name, double value);
void report(const char* name, const QVector<double>& values);

}  // namespace bench
