// Draws without a window or an X server, and writes the picture in the simplest of formats: offscreen [OUT.ppm].

#include <oz/OzScene3D.h>

#include <GL/gl.h>
#include <stdio.h>

int main(int argc, char **argv) {
  int const width = 320, height = 240;
  HDC device = ozDevice::createOffscreen(width, height);
  if (!device) return fprintf(stderr, "No offscreen drawing here.\n"), 1;
  ozContext *context = new ozContext(device);
  context->makeCurrent(device);
  context->setViewport(0, 0, width, height);
  context->setDepthEnable(1);

  ozMaterial *material = new ozMaterial;
  material->setDiffuseColor(0.3f, 0.6f, 0.8f);
  material->setSpecularColor(0.6f, 0.6f, 0.6f);
  ozAppearance *appearance = new ozAppearance;
  appearance->setMaterial(material);
  appearance->setLightEnable(1);
  ozShape *shape = new ozShape;
  shape->setAppearance(appearance);
  shape->addGeometry(new ozCone);
  ozGroup *root = new ozGroup;
  root->ref();
  root->addChild(new ozDirectionalLight);
  root->addChild(shape);

  ozPerspCamera *camera = new ozPerspCamera;
  camera->setHorizFOV(1);
  camera->setPosition(0, 0, 4);
  ozDrawAction *action = new ozDrawAction;
  action->setCamera(camera);

  camera->draw(action);
  context->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH, 1, 1, 1, 1);
  action->apply(root);

  unsigned char *pixels = new unsigned char[width * height * 3];
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels);
  char const *const name = argc > 1 ? argv[1] : "offscreen.ppm";
  FILE *const out = fopen(name, "wb");
  if (!out) return perror(name), 1;
  fprintf(out, "P6 %d %d 255\n", width, height);
  for (int y = height; y-- > 0;) fwrite(pixels + y * width * 3, 1, width * 3, out); // OpenGL's first row is the lowest
  fclose(out);
  printf("%s\n", name);

  delete[] pixels;
  delete action;
  root->unref();
  delete context; // before the device, and after what has drawn in it
  ozDevice::destroy(device);
  return 0;
}
