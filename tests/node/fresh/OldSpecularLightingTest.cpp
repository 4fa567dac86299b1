// The old specular lighting, which the environment asks for before the lights are first used.

#include <stdlib.h>

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

int const asked = setenv("USE_OLD_SPECULAR_LIGHTING", "", 1);

class OldSpecularLighting : public ContextTest {
protected:
  template <class Light> std::vector<std::string> specularOf() {
    Light *const light = new Light;
    light->ref();
    light->setIntensity(0.5f);
    light->setColor(1, 0, 0);
    ozDrawAction action;
    action.setContext(context);
    context->pushLights();
    GLRecorder rec;
    light->draw(&action);
    context->popLights();
    light->unref();
    std::vector<std::string> specular;
    for (std::string const &call : rec.texts())
      if (call.find("GL_SPECULAR") != std::string::npos || call.find("GL_DIFFUSE") != std::string::npos)
        specular.push_back(call);
    return specular;
  }
};

TEST_F(OldSpecularLighting, OfAPointLightIgnoresColourAndIntensity) {
  ASSERT_EQ(asked, 0);
  EXPECT_THAT(specularOf<ozPointLight>(), ::testing::ElementsAre("glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0, 0, 1)",
                                                                 "glLightfv(GL_LIGHT7, GL_SPECULAR, 1, 1, 1, 1)"));
}

TEST_F(OldSpecularLighting, OfTheOthersIsTheirIntensity) {
  EXPECT_THAT(specularOf<ozDirectionalLight>(),
              ::testing::ElementsAre("glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0, 0, 1)",
                                     "glLightfv(GL_LIGHT7, GL_SPECULAR, 0.5, 0.5, 0.5, 1)"));
  EXPECT_THAT(specularOf<ozSpotLight>(), ::testing::ElementsAre("glLightfv(GL_LIGHT7, GL_DIFFUSE, 0.5, 0, 0, 1)",
                                                                "glLightfv(GL_LIGHT7, GL_SPECULAR, 0.5, 0.5, 0.5, 1)"));
}

TEST_F(OldSpecularLighting, StaysOnceTheLightsAreInUse) {
  unsetenv("USE_OLD_SPECULAR_LIGHTING");
  ozLight::initClass();
  EXPECT_EQ(specularOf<ozPointLight>()[1], "glLightfv(GL_LIGHT7, GL_SPECULAR, 1, 1, 1, 1)");
}

} // namespace
