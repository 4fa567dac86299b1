#include "Overlay.h"
#include "Stage.h"

namespace {

int const textSize = 16, lineHeight = 20, margin = 10; // pixels

} // namespace

Overlay::Overlay(std::string const &name) : _shape(new ozShape), _camera(new ozOrthoCamera) {
  _shape->ref();
  for (auto &line : _texts)
    for (int copy = 0; copy < COPIES; copy++) {
      line[copy] = new ozScreenAlignedText;
      line[copy]->setSize(textSize);
      line[copy]->setFace(ozScreenAlignedText::HELVETICA_BOLD);
      float const grey = copy == 0 ? 0 : 1; // the shadow first
      line[copy]->setColor(grey, grey, grey, 1);
      _shape->addGeometry(line[copy]);
    }
  for (auto *text : _texts[0]) text->setText(ozString(name.c_str()));
  _action.setCamera(_camera);
}

Overlay::~Overlay() { _shape->unref(); }

void Overlay::draw(Stage &stage, int width, int height, double frameSeconds) {
  char text[80];
  snprintf(text, sizeof text, frameSeconds > 0 ? "%.1f ms a frame" : "-", 1000 * frameSeconds);
  setText(1, text);
  int const drawn = stage.shapesDrawn();
  snprintf(text, sizeof text, "%d shapes drawn, %d culled", drawn, stage.countShapes() - drawn);
  setText(2, text);

  for (int line = 0; line < LINES; line++)
    for (int copy = 0; copy < COPIES; copy++)
      _texts[line][copy]->setPosition(static_cast<float>(margin + 1 - copy),
                                      static_cast<float>(height - (line + 1) * lineHeight - 1 + copy),
                                      static_cast<float>(copy - 3)); // text ahead of its shadow
  _camera->setWidth(static_cast<float>(width));
  _camera->setHeight(static_cast<float>(height));
  _camera->setCenter(static_cast<float>(width) / 2, static_cast<float>(height) / 2);
  _camera->draw(&_action);
  _action.getContext()->clear(ozContext::CLEAR_DEPTH);
  _action.apply(_shape);
}

void Overlay::setText(int line, char const *text) {
  for (auto *copy : _texts[line]) copy->setText(ozString(text));
}
