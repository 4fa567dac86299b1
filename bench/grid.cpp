#include "grid.h"

namespace {

float const step = 2.5f;

// Six faces of four corners, each face with a normal.
struct Face {
  float normal[3], corners[4][3];
};
Face const faces[6] = {
    {{0, 0, 1}, {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}}},
    {{0, 0, -1}, {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}}},
    {{1, 0, 0}, {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}}},
    {{-1, 0, 0}, {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}}},
    {{0, 1, 0}, {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}}},
    {{0, -1, 0}, {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}}},
};

ozTriSet *makeBox() {
  ozVec3f points[24], normals[24];
  int indices[36];
  for (int f = 0; f < 6; f++) {
    for (int c = 0; c < 4; c++) {
      points[f * 4 + c] = ozVec3f(faces[f].corners[c]);
      normals[f * 4 + c] = ozVec3f(faces[f].normal);
    }
    int const triangles[6] = {0, 1, 2, 0, 2, 3};
    for (int i = 0; i < 6; i++) indices[f * 6 + i] = f * 4 + triangles[i];
  }
  auto *const coords = new ozCoordSet3f(24);
  coords->point()->setRange(0, 24, points);
  auto *const directions = new ozNormalSet3f(24);
  directions->vector()->setRange(0, 24, normals);
  auto *const index = new ozIndexSet(36);
  index->index()->setRange(0, 36, indices);
  auto *const set = new ozTriSet;
  set->setPrimCount(12);
  set->setCoordSet(coords);
  set->setCoordIndexSet(index);
  set->setNormalSet(directions);
  set->setNormalIndexSet(index);
  set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
  return set;
}

} // namespace

Grid::Grid() : root(new ozEnvironment), camera(new ozPerspCamera) {
  root->ref();
  camera->ref();
  root->light()->append(new ozDirectionalLight);
  for (int i = 0; i < MATERIALS; i++) {
    auto *const material = new ozMaterial;
    material->setDiffuseColor(0.1f * static_cast<float>(i), 0.5f, 1 - 0.1f * static_cast<float>(i));
    looks[i] = new ozAppearance;
    looks[i]->ref();
    looks[i]->setMaterial(material);
    looks[i]->setLightEnable(1);
  }
  // Each level's ten children stand in blocks of 5 x 2 and 2 x 5 in turn, so that all groups are nearly square.
  int const across[4] = {2, 5, 2, 5}, width[4] = {50, 10, 5, 1}, height[4] = {20, 10, 2, 1};
  ozGroup *groups[4] = {root};
  for (int box = 0; box < BOXES; box++) {
    int const digits[4] = {box / 1000, box / 100 % 10, box / 10 % 10, box % 10};
    int x = 0, y = 0;
    for (int level = 0; level < 4; level++) {
      x += digits[level] % across[level] * width[level];
      y += digits[level] / across[level] * height[level];
    }
    for (int level = 1, size = 1000; level < 4; level++, size /= 10)
      if (box % size == 0) groups[level - 1]->addChild(groups[level] = new ozGroup);
    auto *const shape = new ozShape;
    shape->setAppearance(looks[box % MATERIALS]);
    sets.push_back(makeBox());
    shape->addGeometry(sets.back());
    auto *const place = new ozTransform;
    place->setTranslation(step * (static_cast<float>(x) - 49.5f), step * (static_cast<float>(y) - 49.5f), 0);
    place->addChild(shape);
    groups[3]->addChild(place);
    places.push_back(place);
  }
  turnAll(0);
  viewAll();
}

Grid::~Grid() {
  for (ozAppearance *look : looks) look->unref();
  camera->unref();
  root->unref();
}

void Grid::viewAll() {
  camera->setPosition(0, 0, 400);
  camera->setOrientation(0, 0, 1, 0);
  camera->setHorizFOV(0.8f);
  camera->setVertFOV(0.8f);
  camera->setNearClip(100);
  camera->setFarClip(1000);
}

void Grid::viewTenth() {
  camera->setPosition(0, 0, 0);
  camera->setOrientation(1, 0, 0, 1.5707964f); // along +Y, within the plane
  camera->setHorizFOV(0.6283185f);
  camera->setVertFOV(0.6283185f);
  camera->setNearClip(0.1f);
  camera->setFarClip(1000);
}

void Grid::turnAll(int frame) {
  for (int i = 0; i < BOXES; i++)
    places[static_cast<size_t>(i)]->setRotation(1, 2, 3, 0.01f * static_cast<float>(i + frame));
}
