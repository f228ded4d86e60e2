#include "gui/gl_mesh_view.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <cmath>

namespace tolvane::gui {

namespace {

const char* kVertexShader = R"(
attribute vec3 position;
uniform mat4 matrix;
void main() { gl_Position = matrix * vec4(position, 1.0); }
)";

const char* kFragmentShader = R"(
#ifdef GL_ES
precision mediump float;
#endif
uniform vec4 colour;
void main() { gl_FragColor = colour; }
)";

QVector3D vec(const ui::Vec3& v) { return {v.x, v.y, v.z}; }

}  // namespace

bool openGlUsable() {
  const QString platform = QGuiApplication::platformName();
  if (platform == "offscreen" || platform == "minimal" || platform == "vnc" || platform == "linuxfb")
    return false;
  QOpenGLContext context;
  return context.create();
}

GlMeshView::GlMeshView(QWidget* parent, int side) : QOpenGLWidget(parent), m_side(side) {
  setFixedSize(side, side);
}

GlMeshView::~GlMeshView() {
  makeCurrent();
  m_buffer.destroy();
  doneCurrent();
}

// A left-handed look-at: x right, y up, z into the picture.
void GlMeshView::setCamera(const ui::Vec3& eye, const ui::Vec3& target, const ui::Vec3& up) {
  QVector3D z = (vec(target) - vec(eye)).normalized();
  QVector3D x = QVector3D::crossProduct(vec(up), z).normalized();
  QVector3D y = QVector3D::crossProduct(z, x);
  QVector3D e = vec(eye);
  m_view =
      QMatrix4x4(x.x(), x.y(), x.z(), -QVector3D::dotProduct(x, e), y.x(), y.y(), y.z(),
                 -QVector3D::dotProduct(y, e), z.x(), z.y(), z.z(), -QVector3D::dotProduct(z, e), 0, 0, 0, 1);
}

// A square perspective; depth runs from the near plane (-1) to the far one (1).
void GlMeshView::setProjection(float nearPlane, float farPlane, float fieldOfView) {
  float k = std::cos(fieldOfView / 2) / std::sin(fieldOfView / 2);
  float n = nearPlane, f = farPlane;
  m_projection =
      QMatrix4x4(k, 0, 0, 0, 0, k, 0, 0, 0, 0, (f + n) / (f - n), -2 * f * n / (f - n), 0, 0, 1, 0);
}

void GlMeshView::setWorldRotationY(float radians) {
  float c = std::cos(radians), s = std::sin(radians);
  m_world = QMatrix4x4(c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1);
}

void GlMeshView::setMaterial(float red, float green, float blue) {
  m_material = QColor::fromRgbF(red, green, blue);
}

QMatrix4x4 GlMeshView::matrix() const { return m_projection * m_view * m_world; }

void GlMeshView::clear(ui::Colour colour) {
  m_building = Frame{};
  m_building.clear = QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

void GlMeshView::drawTriangles(const ui::VertexList& list) {
  m_building.list = &list;
  m_building.triangles = true;
  m_building.triangleMatrix = matrix();
  m_building.triangleColour = m_material;
}

void GlMeshView::drawPoints(const ui::VertexList& list) {
  m_building.list = &list;
  m_building.points = true;
  m_building.pointMatrix = matrix();
  m_building.pointColour = m_material;
}

void GlMeshView::present() {
  m_shown = m_building;
  update();
}

void GlMeshView::initializeGL() {
  initializeOpenGLFunctions();
  m_program.addShaderFromSourceCode(QOpenGLShader::Vertex, kVertexShader);
  m_program.addShaderFromSourceCode(QOpenGLShader::Fragment, kFragmentShader);
  m_program.bindAttributeLocation("position", 0);
  m_program.link();
  m_buffer.create();
  m_uploadedList = nullptr;
  m_uploadedRevision = ~0ull;
}

void GlMeshView::paintGL() {
  ++m_painted;
  const Frame& f = m_shown;
  glClearColor(f.clear.redF(), f.clear.greenF(), f.clear.blueF(), 1);
  glClear(GL_COLOR_BUFFER_BIT);
  if (f.list == nullptr || f.list->empty() || !m_program.isLinked()) return;
  m_buffer.bind();
  if (f.list != m_uploadedList || f.list->revision() != m_uploadedRevision) {
    m_buffer.allocate(f.list->data(), static_cast<int>(f.list->size() * sizeof(ui::Vec3)));
    m_uploadedList = f.list;
    m_uploadedRevision = f.list->revision();
    m_uploadedCount = f.list->size();
  }
  m_program.bind();
  m_program.enableAttributeArray(0);
  m_program.setAttributeBuffer(0, GL_FLOAT, 0, 3, sizeof(ui::Vec3));
  auto count = static_cast<GLsizei>(m_uploadedCount);
  if (f.triangles) {
    m_program.setUniformValue("matrix", f.triangleMatrix);
    m_program.setUniformValue("colour", f.triangleColour);
    glDrawArrays(GL_TRIANGLES, 0, count - count % 3);
  }
  if (f.points) {
    m_program.setUniformValue("matrix", f.pointMatrix);
    m_program.setUniformValue("colour", f.pointColour);
    glDrawArrays(GL_POINTS, 0, count);
  }
  m_program.disableAttributeArray(0);
  m_program.release();
  m_buffer.release();
}

}  // namespace tolvane::gui
