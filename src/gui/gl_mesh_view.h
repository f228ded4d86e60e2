// The live mesh view on OpenGL: a QOpenGLWidget behind the renderer interface. The
// frame the workbench describes (clear colour, triangle list, point list, the matrices at
// the time of drawing) is kept and drawn at the next paint; the vertex list goes to a
// vertex buffer once per revision.
#pragma once

#include <QMatrix4x4>
#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLWidget>
#include <functional>

#include "ui/mesh_renderer.h"

namespace tolvane::gui {

// Whether a QOpenGLWidget can live here: a real window system and a context that can be
// made. On the offscreen platform the widget would crash the window it is in.
bool openGlUsable();

class GlMeshView : public QOpenGLWidget, protected QOpenGLFunctions, public ui::MeshRenderer {
  Q_OBJECT
 public:
  explicit GlMeshView(QWidget* parent = nullptr, int side = 480);
  ~GlMeshView() override;

  void setCamera(const ui::Vec3& eye, const ui::Vec3& target, const ui::Vec3& up) override;
  void setProjection(float nearPlane, float farPlane, float fieldOfView) override;
  void setWorldRotationY(float radians) override;
  void setMaterial(float red, float green, float blue) override;
  void clear(ui::Colour colour) override;
  void drawTriangles(const ui::VertexList& list) override;
  void drawPoints(const ui::VertexList& list) override;
  void present() override;

  // Frames painted since the view was made, for the frame rate.
  long long framesPainted() const { return m_painted; }
  QSize sizeHint() const override { return {m_side, m_side}; }

 protected:
  void initializeGL() override;
  void paintGL() override;

 private:
  struct Frame {
    QColor clear = Qt::white;
    const ui::VertexList* list = nullptr;
    bool triangles = false, points = false;
    QMatrix4x4 triangleMatrix, pointMatrix;
    QColor triangleColour, pointColour;
  };
  QMatrix4x4 matrix() const;

  int m_side;
  QMatrix4x4 m_view, m_projection, m_world;
  QColor m_material = Qt::red;
  Frame m_building, m_shown;
  QOpenGLShaderProgram m_program;
  QOpenGLBuffer m_buffer{QOpenGLBuffer::VertexBuffer};
  const ui::VertexList* m_uploadedList = nullptr;
  std::uint64_t m_uploadedRevision = ~0ull;
  std::size_t m_uploadedCount = 0;
  long long m_painted = 0;
};

}  // namespace tolvane::gui
