#include "handLoop.h"

#include <GL/gl.h>
#include <cmath>
#include <cstring>

namespace {

struct Plane {
  float x, y, z, offset; // outside: the dot product with (x, y, z) is above offset
};

// The planes of a perspective view that looks along -Z or, turned up, along +Y; in the scene's space.
void makePlanes(ozPerspCamera *camera, Plane planes[6]) {
  float const half = camera->getHorizFOV() / 2, c = std::cos(half), s = std::sin(half);
  float const near = camera->getNearClip(), far = camera->getFarClip();
  Plane const eye[6] = {{-c, 0, s, 0}, {c, 0, s, 0}, {0, -c, s, 0}, {0, c, s, 0}, {0, 0, 1, -near}, {0, 0, -1, far}};
  ozMatrix4f view;
  camera->getViewMat(view);
  for (int i = 0; i < 6; i++) {
    Plane const &p = eye[i];
    planes[i].x = view[0][0] * p.x + view[0][1] * p.y + view[0][2] * p.z;
    planes[i].y = view[1][0] * p.x + view[1][1] * p.y + view[1][2] * p.z;
    planes[i].z = view[2][0] * p.x + view[2][1] * p.y + view[2][2] * p.z;
    planes[i].offset = p.offset - (view[3][0] * p.x + view[3][1] * p.y + view[3][2] * p.z);
  }
}

bool isOutside(float const min[3], float const max[3], Plane const planes[6]) {
  for (int i = 0; i < 6; i++) {
    Plane const &p = planes[i];
    // The corner that is furthest in.
    if (p.x * (p.x >= 0 ? min : max)[0] + p.y * (p.y >= 0 ? min : max)[1] + p.z * (p.z >= 0 ? min : max)[2] > p.offset)
      return true;
  }
  return false;
}

void setColor(float to[4], ozVec3f const &color) {
  memcpy(to, color._v, 3 * sizeof(float));
  to[3] = 1;
}

void drawCamera(ozPerspCamera *camera) {
  float left, right, bottom, top, near, far, x, y, z, angle;
  camera->getBaseFrust()->getDiagCorners(left, right, bottom, top, near, far);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glFrustum(left, right, bottom, top, near, far);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  camera->getOrientation(&x, &y, &z, &angle);
  glRotatef(-angle * 57.295776f, x, y, z);
  camera->getPosition(&x, &y, &z);
  glTranslatef(-x, -y, -z);
  glClearColor(0, 0, 0, 1);
  glClearDepth(1);
  glClear(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT);
}

void drawLight() {
  float const position[] = {0, 0, 1, 0}, white[] = {1, 1, 1, 1}, black[] = {0, 0, 0, 1};
  float const values[] = {180, 0, 1, 0, 0};
  float view[16];
  glGetFloatv(GL_MODELVIEW_MATRIX, view);
  glEnable(GL_LIGHT7);
  glLightfv(GL_LIGHT7, GL_POSITION, position);
  glLightfv(GL_LIGHT7, GL_DIFFUSE, white);
  glLightfv(GL_LIGHT7, GL_SPECULAR, white);
  glLightfv(GL_LIGHT7, GL_AMBIENT, black);
  glLightfv(GL_LIGHT7, GL_SPOT_CUTOFF, &values[0]);
  glLightfv(GL_LIGHT7, GL_SPOT_EXPONENT, &values[1]);
  glLightfv(GL_LIGHT7, GL_CONSTANT_ATTENUATION, &values[2]);
  glLightfv(GL_LIGHT7, GL_LINEAR_ATTENUATION, &values[3]);
  glLightfv(GL_LIGHT7, GL_QUADRATIC_ATTENUATION, &values[4]);
}

} // namespace

HandLoop::HandLoop(Grid const &grid) : _boxes(Grid::BOXES), _meshes(Grid::BOXES) {
  for (size_t i = 0; i < Grid::BOXES; i++) {
    ozTriSet *const set = grid.sets[i];
    memcpy(_meshes[i].points, static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->get().getArray(),
           sizeof _meshes[i].points);
    memcpy(_meshes[i].normals, static_cast<ozNormalSet3f *>(set->getNormalSet())->vector()->get().getArray(),
           sizeof _meshes[i].normals);
    memcpy(_meshes[i].indices, set->getCoordIndexSet()->index()->get().getArray(), sizeof _meshes[i].indices);
    ozMatrix4f matrix;
    grid.places[i]->getMatrix(matrix);
    memcpy(_boxes[i].matrix, matrix._m, sizeof matrix._m);
    _boxes[i].look = static_cast<int>(i) % Grid::MATERIALS;
    float x, y, z, angle;
    grid.places[i]->getRotation(&x, &y, &z, &angle);
    _boxes[i].isTurned = angle != 0;
    bound(_boxes[i]);
  }
  for (int i = 0; i < Grid::MATERIALS; i++) {
    ozMaterial *const material = grid.looks[i]->getMaterial();
    ozVec3f color;
    material->getAmbientColor(color);
    setColor(_looks[i].ambient, color);
    material->getDiffuseColor(color);
    setColor(_looks[i].diffuse, color);
    material->getSpecularColor(color);
    setColor(_looks[i].specular, color);
    material->getEmissiveColor(color);
    setColor(_looks[i].emission, color);
    _looks[i].shininess = material->getShininess() * 128;
  }
}

void HandLoop::bound(Box &box) {
  float const *const m = box.matrix;
  for (int j = 0; j < 3; j++) {
    float const reach = std::fabs(m[j]) + std::fabs(m[4 + j]) + std::fabs(m[8 + j]);
    box.min[j] = m[12 + j] - reach;
    box.max[j] = m[12 + j] + reach;
  }
}

void HandLoop::turnAll(int frame) {
  float const length = std::sqrt(14.0f), x = 1 / length, y = 2 / length, z = 3 / length;
  for (int i = 0; i < Grid::BOXES; i++) {
    Box &box = _boxes[static_cast<size_t>(i)];
    float const angle = 0.01f * static_cast<float>(i + frame), s = std::sin(angle), c = std::cos(angle), t = 1 - c;
    float const turned[3][3] = {{t * x * x + c, t * x * y + z * s, t * x * z - y * s},
                                {t * x * y - z * s, t * y * y + c, t * y * z + x * s},
                                {t * x * z + y * s, t * y * z - x * s, t * z * z + c}};
    for (int row = 0; row < 3; row++) memcpy(&box.matrix[4 * row], turned[row], sizeof turned[row]);
    box.isTurned = true;
    bound(box);
  }
}

int HandLoop::draw(Grid const &grid) {
  Plane planes[6];
  makePlanes(grid.camera, planes);
  drawCamera(grid.camera);
  drawLight();
  int drawn = 0, last = -1;
  for (size_t i = 0; i < _boxes.size(); i++) {
    Box const &box = _boxes[i];
    if (isOutside(box.min, box.max, planes)) continue;
    glPushMatrix();
    if (box.isTurned)
      glMultMatrixf(box.matrix);
    else
      glTranslatef(box.matrix[12], box.matrix[13], box.matrix[14]);
    if (drawn++ == 0) glEnable(GL_LIGHTING);
    if (box.look != last) {
      Look const &look = _looks[box.look];
      glMaterialfv(GL_FRONT, GL_AMBIENT, look.ambient);
      glMaterialfv(GL_FRONT, GL_DIFFUSE, look.diffuse);
      glMaterialfv(GL_FRONT, GL_SPECULAR, look.specular);
      glMaterialfv(GL_FRONT, GL_EMISSION, look.emission);
      glMaterialf(GL_FRONT, GL_SHININESS, look.shininess);
      last = box.look;
    }
    Mesh const &mesh = _meshes[i];
    glDisableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 3 * sizeof(float), mesh.normals);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 3 * sizeof(float), mesh.points);
    glDrawElements(GL_TRIANGLES, INDICES, GL_UNSIGNED_INT, mesh.indices);
    glPopMatrix();
  }
  glDisable(GL_LIGHT7);
  glDisable(GL_LIGHTING);
  return drawn;
}
