#ifndef OZ_MATERIAL_H
#define OZ_MATERIAL_H

#include "oz/ozClass.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozObjectId.h"

class ozContext;

/// The colours of a surface. An appearance refers to one for the front and, if it likes, to another for the back.
///
/// A material that shines takes effect only while lighting is enabled in the appearance. Colour components run from 0
/// to 1 and are not clamped.
class OZ_API ozMaterial : public ozContainer {
  OZ_CLASS(ozMaterial);

public:
  enum FaceEnum : int { FRONT = 0, BACK = 1 };

  ozMaterial();

  /// The ambient colour as a fraction of the diffuse one: setting it makes the ambient colour that fraction of the
  /// diffuse colour. 0.2 by default.
  OZ_VALUE_ACCESS(float, AmbientIntensity, 0, _ambientIntensity)
  /// Setting it makes the ambient intensity the ratio of the two luminances, 0 under a black diffuse colour.
  OZ_VEC3F_ACCESS(AmbientColor, 1, _ambient.color)
  /// 0.8, 0.8, 0.8 by default. Setting it leaves the ambient colour and intensity alone.
  OZ_VEC3F_ACCESS(DiffuseColor, 2, _diffuse.color)
  OZ_VEC3F_ACCESS(SpecularColor, 3, _specular.color)
  OZ_VEC3F_ACCESS(EmissiveColor, 4, _emissive.color)
  /// The three indices count in colour index mode only.
  OZ_VALUE_ACCESS(short, AmbientIndex, 5, _ambientIndex)
  OZ_VALUE_ACCESS(short, DiffuseIndex, 6, _diffuseIndex)
  OZ_VALUE_ACCESS(short, SpecularIndex, 7, _specularIndex)
  /// 0.0078125 (1/128) to 1, where 1 is OpenGL's 128; 0.2 by default.
  float getShininess() { return read(8, _shininess); }
  /// Stores the nearest value of the range.
  void setShininess(float shininess);
  /// 0 is opaque, 1 clear. Reaches OpenGL as alpha whether or not blending is on; under a screen door it selects one of
  /// four stipple patterns, the nearest; values too far outside 0 to 1 then leave the pattern as it is.
  OZ_VALUE_ACCESS(float, Transparency, 9, _transparency)

  /// Sends the material to the current OpenGL context, which must be that of `context`. A material that is not the
  /// context's own at present is sent only if the context has not seen its latest change.
  virtual void draw(FaceEnum face, ozContext *context);

  /// The polygon stipple patterns of the screen door of single colours: pattern i has i of 1024 bits set, and each
  /// contains the one before it. Built when the class registers.
  static unsigned int _ditherMatrix[1025][32];

protected:
  void fieldChanged(short id) override;

private:
  // As OpenGL takes a colour; the alpha is put in ahead of that.
  struct Shade {
    ozVec3f color;
    float alpha;
  };

  void drawColors(unsigned int face, float alpha, float specularAlpha, float emissiveAlpha);

  float _ambientIntensity;
  Shade _ambient;
  Shade _diffuse;
  Shade _specular;
  Shade _emissive;
  short _ambientIndex;
  short _diffuseIndex;
  short _specularIndex;
  float _shininess;
  float _transparency;
  ozObjectId _glId;
};

#endif
