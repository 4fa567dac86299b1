// Pictures of the solids under each kind of light.

#include "geometry/geometryFixture.h"
#include "support/goldenImage.h"

namespace {

int const CELL = 160;

/// Three columns (directional, point and spot light) by two rows: a unit solid seen from above, and one that is scaled
/// and moved, seen from below.
class SolidImage : public ::testing::Test {
protected:
  SolidImage() : gl(3 * CELL, 2 * CELL) {
    action.setContext(gl.context);
    action.setCamera(camera.get());
    camera->setPosition(0, 0, 8);
    camera->setNearClip(1);
    camera->setFarClip(20);
    camera->setHorizFOV(0.48f);
    camera->setVertFOV(0.48f);
    material->setDiffuseColor(0.9f, 0.5f, 0.2f);
    material->setSpecularColor(0.6f, 0.6f, 0.6f);
    material->setShininess(0.2f);
    appearance->setMaterial(material.get());
    appearance->setLightEnable(1);
    appearance->setDepthEnable(1);
    directional->setDirection(-0.5f, -0.3f, -1);
    point->setLocation(-1.5f, 0.5f, 4);
    point->setAttenuation(0.5f, 0.1f, 0);
    spot->setLocation(0.3f, 0.2f, 6);
    spot->setDirection(-0.05f, -0.05f, -1);
    spot->setCutOffAngle(15);
    spot->setExponent(8);
    for (ozLight *light : {static_cast<ozLight *>(directional.get()), static_cast<ozLight *>(point.get()),
                           static_cast<ozLight *>(spot.get())})
      light->setAmbientIntensity(0.3f);
    gl->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 0.1f, 0.1f, 0.25f, 1);
  }

  void drawCell(int column, int row, ozLight *light, ozGeometry *solid) {
    Held<ozGroup> root(new ozGroup);
    ozTransform *const turn = new ozTransform;
    ozShape *const shape = new ozShape;
    shape->setAppearance(appearance.get());
    shape->setGeometry(0, solid);
    turn->addChild(shape);
    turn->setRotation(row == 0 ? 0.8f : -0.8f, row == 0 ? 0.6f : -0.6f, 0, 0.6f);
    root->addChild(light);
    root->addChild(turn);
    gl->setViewport(column * CELL, (1 - row) * CELL, CELL, CELL);
    gl->pushLights();
    camera->draw(&action);
    action.apply(root.get());
    gl->popLights();
  }

  Image picture(ozGeometry *plain, ozGeometry *scaled) {
    ozLight *const lights[] = {directional.get(), point.get(), spot.get()};
    for (int column = 0; column < 3; ++column) {
      drawCell(column, 0, lights[column], plain);
      drawCell(column, 1, lights[column], scaled);
    }
    return gl.pixels();
  }

  OffscreenContext gl;
  Held<ozPerspCamera> camera{new ozPerspCamera};
  Held<ozMaterial> material{new ozMaterial};
  Held<ozAppearance> appearance{new ozAppearance};
  Held<ozDirectionalLight> directional{new ozDirectionalLight};
  Held<ozPointLight> point{new ozPointLight};
  Held<ozSpotLight> spot{new ozSpotLight};
  ozDrawAction action;
};

TEST_F(SolidImage, Box) {
  Held<ozBox> plain(new ozBox), scaled(new ozBox);
  scaled->setSize(3, 1, 1.5f);
  scaled->setCenter(0.2f, 0.3f, 0);
  EXPECT_GOLDEN(picture(plain.get(), scaled.get()), "solid_box");
}

TEST_F(SolidImage, Sphere) {
  Held<ozSphere> plain(new ozSphere), scaled(new ozSphere);
  scaled->setRadius(1.5f);
  scaled->setCenter(0.2f, 0.3f, 0);
  EXPECT_GOLDEN(picture(plain.get(), scaled.get()), "solid_sphere");
}

TEST_F(SolidImage, Cone) {
  Held<ozCone> plain(new ozCone), scaled(new ozCone);
  scaled->setBottomRadius(1.5f);
  scaled->setHeight(1.2f);
  scaled->setCenter(0.2f, 0.3f, 0);
  EXPECT_GOLDEN(picture(plain.get(), scaled.get()), "solid_cone");
}

TEST_F(SolidImage, Cylinder) {
  Held<ozCylinder> plain(new ozCylinder), scaled(new ozCylinder);
  scaled->setRadius(1.5f);
  scaled->setHeight(1.2f);
  scaled->setCenter(0.2f, 0.3f, 0);
  EXPECT_GOLDEN(picture(plain.get(), scaled.get()), "solid_cylinder");
}

TEST_F(SolidImage, AScaledSolidIsAsBrightAsAUnitOne) {
  // Under a headlight the middle of a sphere shows the material's diffuse colour, whatever the radius.
  material->setSpecularColor(0, 0, 0);
  directional->setAmbientIntensity(0);
  directional->setDirection(0, 0, -1);
  Held<ozSphere> sphere(new ozSphere);
  for (float radius : {0.5f, 1.0f, 1.5f}) {
    sphere->setRadius(radius);
    drawCell(0, 0, directional.get(), sphere.get());
    Image::Pixel const middle = gl.pixels().at(CELL / 2, CELL / 2);
    EXPECT_NEAR(middle[0], 0.9 * 255, 6) << radius;
    EXPECT_NEAR(middle[1], 0.5 * 255, 6) << radius;
    EXPECT_NEAR(middle[2], 0.2 * 255, 6) << radius;
  }
}

} // namespace
