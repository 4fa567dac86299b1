#ifndef OZ_LIGHT_H
#define OZ_LIGHT_H

#include "oz/ozFieldAccess.h"
#include "oz/ozNode.h"
#include "oz/ozObjectId.h"

class ozContext;

/// Base of the lights.
///
/// A light takes effect in the order of the traversal: it lights what is drawn after it, up to the end of the scope
/// that holds it, which is an ozEnvironment or the whole traversal; a plain group is no scope. It lies where its node
/// lies in the graph. Only shapes whose appearance enables lighting are lit. The context decides which of OpenGL's
/// eight lights a node gets; a ninth one at a time is refused.
class OZ_API ozLight : public ozNode {
  OZ_ABSTRACT_CLASS(ozLight);

public:
  /// 1 by default.
  OZ_VALUE_ACCESS(unsigned char, On, 2, _on)
  /// Factor of the colour for the diffuse and specular light. 1 by default.
  OZ_VALUE_ACCESS(float, Intensity, 3, _intensity)
  /// Factor of the colour for the ambient light. 0 by default.
  OZ_VALUE_ACCESS(float, AmbientIntensity, 4, _ambientIntensity)
  /// White by default.
  OZ_VEC3F_ACCESS(Color, 5, _color)

  ozTravDirective drawVisit(ozDrawAction *action) override;
  /// Puts the light into effect in the action's context, under the current modelview matrix.
  virtual void draw(ozDrawAction *action);
  /// For the context, at the end of a scope: restores the light as it was below, under the matrix of that level.
  void pop(ozMatrix4f const &matrix, ozContext *context);

  /// As ozObject::unref; the last reference also switches the light off in all contexts. It hides the base's operation,
  /// which does no such thing.
  unsigned char unref();

protected:
  void fieldChanged(short id) override;
  /// Sends the light's parameters to OpenGL light 0 to 7, under the current modelview matrix.
  virtual void define(int light) = 0;

  /// What each define() comes down to: sends all parameters of a light. `oldSpecular` is the specular light of the old
  /// mode; without a spot direction none is sent. Angles are degrees.
  void send(int light, ozVec4f const &position, float oldSpecular, ozVec3f const &attenuation,
            ozVec3f const *spotDirection = nullptr, float cutOffAngle = 180.0f, float exponent = 0.0f) const;
  float intensity() const { return _intensity; }
  /// What a change of a field of a kind of light does: it counts, and is not announced. False for all other fields.
  bool takeOwnChange(ozType const *kind, short id);

  ozObjectId _glId;

private:
  bool needsDefinition(int slot, int match, ozContext *context);

  static unsigned char useNewLighting;

  unsigned char _on;
  float _intensity;
  float _ambientIntensity;
  ozVec3f _color;
};

/// A light that shines along one direction from infinitely far away.
class OZ_API ozDirectionalLight : public ozLight {
  OZ_CLASS(ozDirectionalLight);

public:
  ozDirectionalLight();

  /// Where the light goes, of any length. 0, 0, -1 by default.
  OZ_VEC3F_ACCESS(Direction, 6, _direction)

protected:
  void fieldChanged(short id) override;
  void define(int light) override;

private:
  ozVec3f _direction;
};

/// A light that shines from a point into all directions.
class OZ_API ozPointLight : public ozLight {
  OZ_CLASS(ozPointLight);

public:
  ozPointLight();

  /// The origin by default.
  OZ_VEC3F_ACCESS(Location, 6, _location)
  /// Stored for the application; the light reaches as far as its attenuation lets it. 100 by default.
  OZ_VALUE_ACCESS(float, Radius, 7, _radius)
  /// The constant, linear and quadratic coefficient over the distance. 1, 0, 0 by default.
  OZ_VEC3F_ACCESS(Attenuation, 8, _attenuation)

protected:
  void fieldChanged(short id) override;
  void define(int light) override;
  /// As ozLight::send, with location and attenuation of this light.
  void sendPoint(int light, float oldSpecular, ozVec3f const *spotDirection, float cutOffAngle, float exponent) const;

private:
  ozVec3f _location;
  float _radius;
  ozVec3f _attenuation;
};

/// A point light that shines into a cone.
class OZ_API ozSpotLight : public ozPointLight {
  OZ_CLASS(ozSpotLight);

public:
  ozSpotLight();

  /// The axis of the cone. 0, 0, -1 by default.
  OZ_VEC3F_ACCESS(Direction, 9, _direction)
  /// How fast the light falls off from the axis: 0, evenly lit, to 128. 0 by default.
  OZ_VALUE_ACCESS(float, Exponent, 10, _exponent)
  /// Degrees between the axis and the edge of the cone: 0 to 90, or 180, the default, for no cone at all.
  OZ_VALUE_ACCESS(float, CutOffAngle, 11, _cutOffAngle)

protected:
  void fieldChanged(short id) override;
  void define(int light) override;

private:
  ozVec3f _direction;
  float _exponent;
  float _cutOffAngle;
};

#endif
