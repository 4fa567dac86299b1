#ifndef TESTS_ANIM_SENSOR_SCENE_H
#define TESTS_ANIM_SENSOR_SCENE_H

#include "oz/ozCamera.h"
#include "oz/ozCoordSet.h"
#include "oz/ozGroup.h"
#include "oz/ozPickSensor.h"
#include "oz/ozQuadSet.h"
#include "oz/ozShape.h"
#include "oz/ozTransform.h"

/// A square from (-1, -1) to (1, 1) in the plane z = 0, in a transform, in a group with room for sensors, seen straight
/// from above. In a viewport of 500 x 500 the pixel (px, py) shows the point (px / 50 - 5, py / 50 - 5).
struct SensorScene {
  SensorScene()
      : root(new ozGroup), group(new ozGroup), transform(new ozTransform), shape(new ozShape),
        camera(new ozOrthoCamera) {
    ozCoordSet3f *const corners = new ozCoordSet3f;
    corners->point()->set(0, ozVec3f(-1, -1, 0));
    corners->point()->set(1, ozVec3f(1, -1, 0));
    corners->point()->set(2, ozVec3f(1, 1, 0));
    corners->point()->set(3, ozVec3f(-1, 1, 0));
    ozQuadSet *const square = new ozQuadSet;
    square->setPrimCount(1);
    square->setCoordSet(corners);
    shape->addGeometry(square);
    transform->addChild(shape);
    group->addChild(transform);
    root->addChild(group);
    root->ref();
    camera->ref();
    camera->setWidth(10);
    camera->setHeight(10);
    camera->setPosition(0, 0, 10);
  }
  ~SensorScene() {
    root->unref();
    camera->unref();
  }
  SensorScene(SensorScene const &) = delete;
  SensorScene &operator=(SensorScene const &) = delete;

  /// One mouse event at the pixel that shows the point (x, y).
  void mouse(float x, float y, int down) {
    ozPickSensor::updateSensors(root, camera, static_cast<int>((x + 5) * 50 + 0.5f),
                                static_cast<int>((y + 5) * 50 + 0.5f), down);
  }

  ozGroup *const root, *const group;
  ozTransform *const transform;
  ozShape *const shape;
  ozOrthoCamera *const camera;
};

#endif
