#include "gui/pictures.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <functional>
#include <map>

namespace tolvane::gui {

namespace {
using Draw = std::function<void(QPainter&)>;  // draws in a 32 x 32 box

const QColor kInk(40, 48, 72);
const QColor kBlue(40, 96, 190);
const QColor kGreen(30, 140, 60);
const QColor kRed(200, 40, 40);

void lines(QPainter& p, int x, int y, int w, int count) {
  for (int i = 0; i < count; ++i) p.drawLine(x, y + i * 5, x + w, y + i * 5);
}

// The Bracket Checker's results: the braces, with a question mark on the missing side.
void drawBracketResult(QPainter& p, const QColor& colour, const char* text) {
  QFont f = p.font();
  f.setPixelSize(20);
  f.setBold(true);
  p.setFont(f);
  p.setPen(colour);
  p.drawText(QRect(0, 0, 32, 32), Qt::AlignCenter, text);
}

void cube(QPainter& p, double s) {
  QPolygonF front({{6, 12}, {20, 12}, {20, 26}, {6, 26}});
  p.drawPolygon(front);
  p.drawPolyline(QPolygonF({{6, 12}, {12 * s, 5}, {26, 5}, {20, 12}}));
  p.drawPolyline(QPolygonF({{26, 5}, {26, 19}, {20, 26}}));
}

const std::map<std::string, Draw>& drawings() {
  static const std::map<std::string, Draw> table = {
      {"PictureViewChannels",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         lines(p, 4, 6, 14, 4);
         p.setPen(QPen(kBlue, 3));
         p.drawEllipse(QPointF(20, 18), 6, 6);
         p.drawLine(24, 22, 29, 28);
       }},
      {"PictureCopyToDest",
       [](QPainter& p) {
         p.setPen(Qt::NoPen);
         p.setBrush(kGreen);
         p.drawPolygon(QPolygonF({{3, 16}, {15, 5}, {15, 11}, {28, 11}, {28, 21}, {15, 21}, {15, 27}}));
       }},
      {"PictureTrash",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         p.setBrush(QColor(170, 176, 186));
         p.drawPolygon(QPolygonF({{8, 9}, {24, 9}, {22, 29}, {10, 29}}));
         p.drawLine(5, 7, 27, 7);
         p.drawRect(13, 3, 6, 4);
         for (int x : {12, 16, 20}) p.drawLine(x, 12, x, 26);
       }},
      {"PictureJoints",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 4, Qt::SolidLine, Qt::RoundCap));
         p.drawLine(5, 26, 15, 15);
         p.drawLine(15, 15, 27, 9);
         p.setPen(QPen(kRed, 2));
         p.setBrush(QColor(255, 210, 120));
         p.drawEllipse(QPointF(15, 15), 5, 5);
       }},
      {"PictureEMC",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         p.setBrush(QColor(220, 225, 235));
         p.drawEllipse(QPointF(12, 19), 8, 8);
         p.drawLine(12, 19, 16, 13);
         p.setPen(QPen(kBlue, 2));
         p.drawLine(20, 13, 28, 5);
         p.drawLine(28, 5, 23, 5);
         p.drawLine(28, 5, 28, 10);
       }},
      {"PictureEditor",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 1.5));
         p.setBrush(Qt::white);
         p.drawRect(5, 3, 18, 26);
         lines(p, 8, 8, 12, 4);
         p.setPen(QPen(QColor(210, 150, 30), 4, Qt::SolidLine, Qt::RoundCap));
         p.drawLine(16, 27, 28, 13);
       }},
      {"PictureChangeRatio",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         p.drawLine(4, 22, 28, 22);
         p.setBrush(kBlue);
         p.drawRect(17, 16, 5, 12);
         QFont f = p.font();
         f.setPixelSize(11);
         f.setBold(true);
         p.setFont(f);
         p.drawText(QRect(2, 2, 28, 13), Qt::AlignCenter, "1:2");
       }},
      {"PictureRenameMorph",
       [](QPainter& p) {
         QFont f = p.font();
         f.setPixelSize(15);
         f.setBold(true);
         p.setFont(f);
         p.setPen(kInk);
         p.drawText(QRect(1, 4, 22, 20), Qt::AlignCenter, "Ab");
         p.setPen(QPen(kBlue, 2));
         p.drawLine(25, 5, 25, 27);
         p.drawLine(22, 5, 28, 5);
         p.drawLine(22, 27, 28, 27);
       }},
      {"PictureChannelReorderDone",
       [](QPainter& p) {
         p.setPen(QPen(kGreen, 4, Qt::SolidLine, Qt::RoundCap));
         p.drawPolyline(QPolygonF({{6, 17}, {13, 25}, {27, 7}}));
       }},
      {"PictureOBJView",
       [](QPainter& p) {
         p.setPen(QPen(kBlue, 1.6));
         cube(p, 1.0);
         p.drawLine(6, 12, 20, 26);
       }},
      {"PictureOBJExtract",
       [](QPainter& p) {
         p.setPen(QPen(kBlue, 1.6));
         cube(p, 1.0);
         p.setPen(QPen(kGreen, 3));
         p.drawLine(13, 19, 29, 29);
       }},
      {"PictureScaleObj",
       [](QPainter& p) {
         p.setPen(QPen(kBlue, 1.6));
         cube(p, 1.0);
         p.setPen(QPen(kRed, 2));
         p.drawLine(3, 29, 29, 3);
         p.drawLine(29, 3, 23, 3);
         p.drawLine(29, 3, 29, 9);
       }},
      {"PictureMash",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         p.setBrush(QColor(150, 110, 70));
         p.drawRect(14, 12, 4, 17);
         p.setBrush(QColor(120, 125, 135));
         p.drawRect(5, 4, 22, 9);
       }},
      {"PictureMapViewer",
       [](QPainter& p) {
         for (int y = 0; y < 4; ++y)
           for (int x = 0; x < 4; ++x)
             p.fillRect(4 + x * 6, 4 + y * 6, 6, 6,
                        (x + y) % 2 ? QColor(235, 235, 235) : QColor(90, 150, 90));
         p.setPen(QPen(kRed, 1.5));
         p.drawPolygon(QPolygonF({{8, 24}, {22, 8}, {27, 26}}));
       }},
      {"PictureMirror",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 1, Qt::DashLine));
         p.drawLine(16, 2, 16, 30);
         p.setPen(Qt::NoPen);
         p.setBrush(kBlue);
         p.drawPolygon(QPolygonF({{13, 6}, {13, 26}, {3, 26}}));
         p.setBrush(QColor(140, 170, 230));
         p.drawPolygon(QPolygonF({{19, 6}, {19, 26}, {29, 26}}));
       }},
      {"PictureBrktsOK", [](QPainter& p) { drawBracketResult(p, kGreen, "{ }"); }},
      {"PictureBrktLeft", [](QPainter& p) { drawBracketResult(p, kRed, "? }"); }},
      {"PictureBrktRight", [](QPainter& p) { drawBracketResult(p, kRed, "{ ?"); }},
      {"PicturePushPin",
       [](QPainter& p) {
         p.setPen(QPen(kInk, 2));
         p.drawLine(16, 18, 16, 30);
         p.setBrush(kRed);
         p.drawEllipse(QPointF(16, 11), 8, 8);
       }},
  };
  return table;
}

const std::map<std::string, const char*>& tips() {
  static const std::map<std::string, const char*> table = {
      {"PictureViewChannels", "View the channels of the chosen body part"},
      {"PictureCopyToDest", "Copy the chosen morph from the source to the destination"},
      {"PictureTrash", "Drop channels or body parts here to remove them"},
      {"PictureJoints", "Joint parameters"},
      {"PictureEMC", "Build a controlled morph"},
      {"PictureEditor", "Open the file in the Manual Editor"},
      {"PictureChangeRatio", "Change the control ratio of an EMC morph"},
      {"PictureRenameMorph", "Rename the morph or body part"},
      {"PictureChannelReorderDone", "Write the new channel order"},
      {"PictureOBJView", "View the main OBJ"},
      {"PictureOBJExtract", "Export embedded geometry"},
      {"PictureScaleObj", "Scale the OBJ"},
      {"PictureMash", "Mash the OBJ"},
      {"PictureMapViewer", "View the texture maps"},
      {"PictureMirror", "Mirror"},
      {"PictureMatColor", "Diffuse colour of the chosen material"},
      {"PictureMatHiLite", "Highlight colour of the chosen material"},
      {"PictureBrktsOK", "Braces balance. Click to go on"},
      {"PictureBrktLeft", "A left brace is missing. Click to go on"},
      {"PictureBrktRight", "A right brace is missing. Click to go on"},
      {"PicturePushPin", "Click the result picture to go on"},
      {"LabelMainOBJPath", "Click to browse for the main geometry"},
      {"LabelMainTex", "Click to browse for the texture map"},
      {"LabelMainBump", "Click to browse for the bump map"},
      {"LabelMainReflect", "Click to browse for the reflection map"},
      {"LabelMainTrans", "Click to browse for the transparency map"},
      {"LabelOpenSource", "Open a source file"},
      {"LabelFileName", "Open the destination in the Manual Editor"},
      {"LabelChannelFileName", "Open the source in the Manual Editor"},
  };
  return table;
}
}  // namespace

QPixmap toolIcon(const std::string& controlName, int size) {
  auto it = drawings().find(controlName);
  if (it == drawings().end()) return {};
  // Drawn at the screen's pixel density, so the icon stays sharp at every scale.
  const qreal ratio = std::max<qreal>(1.0, qApp != nullptr ? qApp->devicePixelRatio() : 1.0);
  QPixmap pixmap(QSize(size, size) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 32.0, size / 32.0);
  it->second(painter);
  return pixmap;
}

QString defaultToolTip(const std::string& controlName) {
  auto it = tips().find(controlName);
  return it == tips().end() ? QString() : QString::fromLatin1(it->second);
}

QImage splashImage(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, height);
  sky.setColorAt(0, QColor(28, 44, 78));
  sky.setColorAt(1, QColor(70, 108, 160));
  p.fillRect(image.rect(), sky);
  // A posed figure of joints and bones.
  double s = height / 300.0;
  double cx = width * 0.72;
  auto at = [&](double x, double y) { return QPointF(cx + x * s, y * s); };
  const QPointF joints[] = {at(0, 60),   at(0, 95),   at(0, 150),   at(-30, 100), at(-55, 140),
                            at(30, 100), at(62, 80),  at(-18, 150), at(-25, 205), at(-30, 260),
                            at(18, 150), at(35, 205), at(28, 260)};
  const int bones[][2] = {{0, 1}, {1, 2}, {1, 3}, {3, 4},  {1, 5},   {5, 6},
                          {2, 7}, {7, 8}, {8, 9}, {2, 10}, {10, 11}, {11, 12}};
  p.setPen(QPen(QColor(220, 230, 245), 5 * s, Qt::SolidLine, Qt::RoundCap));
  for (const auto& b : bones) p.drawLine(joints[b[0]], joints[b[1]]);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 200, 90));
  for (const QPointF& j : joints) p.drawEllipse(j, 5 * s, 5 * s);
  p.setBrush(QColor(220, 230, 245));
  p.drawEllipse(at(0, 38), 16 * s, 18 * s);
  QFont title("DejaVu Sans", 1);
  title.setPixelSize(static_cast<int>(54 * s));
  title.setBold(true);
  p.setFont(title);
  p.setPen(Qt::white);
  p.drawText(QRectF(width * 0.06, height * 0.25, width * 0.6, 70 * s), Qt::AlignLeft | Qt::AlignVCenter,
             "Tolvane");
  QFont sub = title;
  sub.setPixelSize(static_cast<int>(17 * s));
  sub.setBold(false);
  p.setFont(sub);
  p.setPen(QColor(200, 215, 240));
  p.drawText(QRectF(width * 0.06, height * 0.25 + 72 * s, width * 0.6, 60 * s),
             Qt::AlignLeft | Qt::TextWordWrap, "Workbench for Poser figures, poses, props and scenes");
  p.drawText(QRectF(width * 0.06, height * 0.82, width * 0.6, 24 * s), Qt::AlignLeft,
             "Ver. 5.0  -  File, Open to begin");
  return image;
}

QIcon appIcon() {
  QPixmap pixmap(64, 64);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(40, 64, 112));
  p.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);
  p.drawImage(QRectF(10, 4, 44, 56), splashImage(220, 110), QRectF(114, 0, 88, 110));
  return QIcon(pixmap);
}

QImage tileImage() {
  QImage tile(32, 16, QImage::Format_RGB32);
  QPainter p(&tile);
  p.fillRect(tile.rect(), QColor(46, 64, 104));
  p.setPen(QColor(28, 40, 70));
  p.drawRect(0, 0, 31, 7);
  p.drawRect(-16, 8, 31, 7);
  p.drawRect(16, 8, 31, 7);
  return tile;
}

}  // namespace tolvane::gui
