#pragma once

#include <QString>
#include <exception>

namespace store {

// The one failure of store and platform: a number, and a description in Italian for the user. What
// it quotes may be of any length: the description is cut to what a message box can show.
class Failure final : public std::exception {
 public:
  Failure(int number, const QString& description)
      : number_(number), description_(shortened(description)), text_(description_.toUtf8()) {}

  int number() const noexcept { return number_; }
  const QString& description() const noexcept { return description_; }
  const char* what() const noexcept override { return text_.constData(); }

 private:
  static QString shortened(const QString& description) {
    constexpr qsizetype kLongest = 400;
    return description.size() > kLongest ? description.left(kLongest) + u'…' : description;
  }

  int number_;
  QString description_;
  QByteArray text_;
};

// Numbers of the record engine's failures, as users of such engines know them.
namespace failure {
inline constexpr int kTold = 0;  // the user knows already: what follows from it is not told
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscript = 9;
inline constexpr int kNameTaken = 3012;
inline constexpr int kIndexNotFound = 3015;
inline constexpr int kUpdateWithoutEdit = 3020;
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateKey = 3022;
inline constexpr int kFileNotFound = 3024;
inline constexpr int kDiskFull = 3026;
inline constexpr int kReadOnly = 3027;
inline constexpr int kNoTransaction = 3034;
inline constexpr int kDiskError = 3043;
inline constexpr int kDamaged = 3049;
inline constexpr int kCannotOpen = 3051;
inline constexpr int kInterrupted = 3059;
inline constexpr int kUnknownName = 3061;
inline constexpr int kSyntax = 3075;
inline constexpr int kTableNotFound = 3078;
inline constexpr int kInvalidBookmark = 3159;
inline constexpr int kTextTooLong = 3163;
inline constexpr int kFieldNotUpdatable = 3164;
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kChanged = 3197;
inline constexpr int kFileExists = 3204;
inline constexpr int kNoSuchType = 3219;
inline constexpr int kWrongOperation = 3251;
inline constexpr int kLocked = 3260;
inline constexpr int kItemNotFound = 3265;
inline constexpr int kUnknownFormat = 3343;
inline constexpr int kTooComplex = 3360;
inline constexpr int kClosed = 3420;
inline constexpr int kConversion = 3421;
inline constexpr int kPageDamaged = 3428;
}  // namespace failure

}  // namespace store
