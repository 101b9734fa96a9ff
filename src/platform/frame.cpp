#include "platform/frame.h"

#include "platform/screen_room.h"

namespace platform {
namespace {

constexpr int kCharacters = 70;

}  // namespace

void Frame::SetCaption(const QString& caption) {
  caption_ = caption;
  const QString shown =
      fontMetrics().elidedText(caption, Qt::ElideMiddle, widthOfCharacters(this, kCharacters));
  setTitle(QString(shown).replace(u'&', QStringLiteral("&&")));
  setToolTip(shown == caption ? QString() : caption.trimmed());
  setAccessibleName(caption.trimmed());
}

}  // namespace platform
