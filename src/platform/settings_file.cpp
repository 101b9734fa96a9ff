#include "platform/settings_file.h"

// The packaged header leaves the templates to a library that knows the stock classes only.
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cstdlib>
#include <optional>

#include "platform/system_path.h"

namespace platform {
namespace {

constexpr int kLongestValue = 255;

bool sameName(const QString& left, const QString& right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

// Order of section and key names for the parser.
struct NameLess {
  bool operator()(const char* left, const char* right) const {
    return QString::fromUtf8(left).compare(QString::fromUtf8(right), Qt::CaseInsensitive) < 0;
  }
};

using Ini = CSimpleIniTempl<char, NameLess, SI_ConvertA<char>>;

// Nothing if the path is no file, or cannot be read.
std::optional<QByteArray> contentOf(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray content = file.readAll();
  if (file.error() != QFile::NoError || content.contains('\0')) return std::nullopt;
  return content;
}

bool isQuoted(const QString& value) {
  return value.size() > 1 && value.front() == value.back() &&
         (value.front() == '"' || value.front() == '\'');
}

std::optional<QString> find(const QByteArray& content, const QString& section, const QString& key) {
  Ini ini(true, true);  // UTF-8, equal keys kept apart
  Ini::TNamesDepend values;
  if (ini.LoadData(content.constData(), static_cast<size_t>(content.size())) < 0 ||
      !ini.GetAllValues(section.toUtf8().constData(), key.toUtf8().constData(), values)) {
    return std::nullopt;
  }
  values.sort(Ini::Entry::LoadOrder());
  const QString value = QString::fromUtf8(values.front().pItem).trimmed();
  return isQuoted(value) ? value.mid(1, value.size() - 2) : value;
}

std::optional<QString> read(const QString& path, const QString& section, const QString& key) {
  const auto content = contentOf(systemPath(path));
  if (!content) return std::nullopt;
  return find(*content, section.trimmed(), key.trimmed());
}

QString shortened(QString value) {
  value.truncate(kLongestValue);
  if (!value.isEmpty() && value.back().isHighSurrogate()) value.chop(1);
  return value;
}

// A text in lines, each with its line end; a byte order mark is a line of its own.
QByteArrayList linesOf(const QByteArray& content) {
  static const QByteArray mark = "\xEF\xBB\xBF";
  QByteArrayList lines;
  if (content.startsWith(mark)) lines.append(mark);
  for (qsizetype begin = lines.join().size(), at = begin; at < content.size(); begin = at) {
    while (at < content.size() && content[at] != '\r' && content[at] != '\n') ++at;
    if (content.mid(at, 2) == "\r\n") ++at;
    lines.append(content.mid(begin, ++at - begin));
  }
  return lines;
}

// A settings file as lines of text. The parser's own writing would drop lines it does not know.
class Editor final {
 public:
  explicit Editor(const QByteArray& content)
      : lineEnd_(content.contains("\r\n") ? "\r\n" : "\n"), lines_(linesOf(content)) {}

  void set(const QString& section, const QString& key, const QByteArray& value) {
    const QByteArray line = key.toUtf8() + "=" + value + lineEnd_;
    const Place place = locate(section, key);
    if (place.key >= 0) {
      replaceValue(lines_[place.key], value);
    } else if (place.sectionEnd >= 0) {
      endLine(place.sectionEnd - 1);
      lines_.insert(place.sectionEnd, line);
    } else {
      endLine(lines_.size() - 1);
      if (!lines_.isEmpty()) lines_.append(lineEnd_);
      lines_.append("[" + section.toUtf8() + "]" + lineEnd_ + line);
    }
  }

  QByteArray content() const { return lines_.join(); }

 private:
  struct Place {
    qsizetype key = -1;         // line of the key
    qsizetype sectionEnd = -1;  // line after the section's last entry
  };

  Place locate(const QString& section, const QString& key) const {
    Place place;
    bool inside = section.isEmpty();
    for (qsizetype at = 0; at < lines_.size(); ++at) {
      const QByteArray line = lines_[at].trimmed();
      if (line.isEmpty() || line.startsWith(';') || line.startsWith('#')) continue;
      if (line.startsWith('[')) inside = sameName(headerOf(line), section);
      if (!inside) continue;
      place.sectionEnd = at + 1;
      if (isEntry(line, key)) {
        place.key = at;
        return place;
      }
    }
    return place;
  }

  static bool isEntry(const QByteArray& line, const QString& key) {
    const qsizetype equals = line.indexOf('=');
    return !line.startsWith('[') && equals > 0 &&
           sameName(QString::fromUtf8(line.left(equals)).trimmed(), key);
  }

  // A header that is not closed begins a section that cannot be named, as in the parser.
  static QString headerOf(const QByteArray& line) {
    const qsizetype end = line.indexOf(']');
    return end < 0 ? QString("\n") : QString::fromUtf8(line.mid(1, end - 1)).trimmed();
  }

  static void replaceValue(QByteArray& line, const QByteArray& value) {
    qsizetype begin = line.indexOf('=') + 1;
    while (begin < line.size() && (line[begin] == ' ' || line[begin] == '\t')) ++begin;
    qsizetype end = line.size();
    while (end > begin && (line[end - 1] == '\n' || line[end - 1] == '\r')) --end;
    line.replace(begin, end - begin, value);
  }

  // Sees to it that a line (-1: none) ends with a line break.
  void endLine(qsizetype at) {
    if (at >= 0 && !lines_[at].endsWith('\n') && !lines_[at].endsWith('\r')) lines_[at] += lineEnd_;
  }

  QByteArray lineEnd_;
  QByteArrayList lines_;
};

bool save(const QString& path, const QByteArray& content) {
  QSaveFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

// As it stands in the file: in quotes if it would lose something without.
QByteArray written(const QString& value) {
  const bool plain = value == value.trimmed() && !isQuoted(value);
  return (plain ? value : '"' + value + '"').toUtf8();
}

}  // namespace

QString readString(const QString& path, const QString& section, const QString& key,
                   const QString& fallback) {
  return shortened(read(path, section, key).value_or(fallback));
}

qint64 readInt(const QString& path, const QString& section, const QString& key, qint64 fallback) {
  const auto value = read(path, section, key);
  if (!value) return fallback;
  // strtoll stops at the first character that is no digit, and at the largest number.
  return std::strtoll(value->toUtf8().constData(), nullptr, 10);
}

bool writeString(const QString& path, const QString& section, const QString& key,
                 const QString& value) {
  const QString target = systemPath(path);
  const auto old = QFileInfo::exists(target) ? contentOf(target) : QByteArray();
  if (target.isEmpty() || !old) return false;
  Editor editor(*old);
  editor.set(section.trimmed(), key.trimmed(), written(value));
  const QByteArray content = editor.content();
  return find(content, section.trimmed(), key.trimmed()) == value && save(target, content);
}

}  // namespace platform
