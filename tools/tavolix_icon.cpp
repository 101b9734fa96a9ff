// Paints a drawing (SVG) as a square picture: tavolix-icon DRAWING SIZE PICTURE. Desktops that read
// no drawings show these. Ends with 1 if the drawing cannot be read or the picture not be written.

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("Uso: tavolix-icon DISEGNO LATO IMMAGINE\n", stderr);
    return 2;
  }
  const int size = QByteArray(argv[2]).toInt();
  QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
  if (!drawing.isValid() || size <= 0) return 1;
  QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  drawing.render(&painter);
  painter.end();
  return picture.save(QString::fromLocal8Bit(argv[3])) ? 0 : 1;
}
