#include "oz/ozTexture.h"

OZ_DEFINE_INSTANCES(ozImageTexture)
OZ_DEFINE_TYPE(ozImageTexture, "ImageTexture", ozTexture) {
  ozMFString::addTypeField(type, "url", 7, &ozImageTexture::_url);
}

ozImageTexture::ozImageTexture(ozType *type) : ozTexture(type) { initFieldDefaults(_ClassType); }

ozImageTexture::~ozImageTexture() {
  destroyFieldContents(_ClassType);
  _url.freeTexts();
}

void ozImageTexture::fieldChanged(short id) {
  if (id != 7) return ozTexture::fieldChanged(id);
  if (_url.getCount() > 0) showFile(_url[0]);
  touchField(id);
}

void ozImageTexture::showFile(ozString const &name) {
  ozImage *image = getImage(0);
  if (!image) {
    setFileName(name);
    image = new ozImage;
    if (!image) return;
    image->setFileName(name);
    if (image->load())
      imageLevel()->set(0, image);
    else
      image->unref();
    return;
  }
  ozString shown;
  image->getFileName(shown);
  if (shown == name) return;
  image->setFileName(name);
  if (image->load()) imageLoaded();
}
