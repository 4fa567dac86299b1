// What the raster state groups find out about OpenGL is kept in the process, so each question is put in a child of this
// one, which has asked nothing yet.

#include "oz/OzScene3D.h"
#include "support/glRecorder.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <unistd.h>

using ::testing::ExitedWithCode;

namespace {

/// The OpenGL of a child: answers as told, and no call goes further.
struct FakeGL : GLRecorder {
  explicit FakeGL(char const *version = nullptr, char const *extensions = nullptr) {
    passOn(false);
    if (version) answerString(GL_VERSION, version);
    if (extensions) answerString(GL_EXTENSIONS, extensions);
  }
};

template <class Group> [[noreturn]] void exitWithLevel() {
  Group::extensionDetect();
  _exit(Group::isSupported());
}

/// Leaves with 0 if everything held; nothing is cleaned up on the way.
void leave(bool held) { _exit(held ? 0 : 1); }

char const Both[] = "GL_ARB_multitexture GL_EXT_blend_minmax GL_EXT_blend_subtract";

/// The level that a class finds with such an OpenGL, in a child of this process.
template <class Group> void expectLevel(int level, char const *version = nullptr, char const *extensions = nullptr) {
  EXPECT_EXIT(
      {
        FakeGL gl(version, extensions);
        exitWithLevel<Group>();
      },
      ExitedWithCode(level), "");
}

} // namespace

TEST(RasterSupport, IsUnknownBeforeTheFirstObject) {
  EXPECT_EQ(ozBlendEquation::isSupported(), -1);
  EXPECT_EQ(ozLogicOp::isSupported(), -1);
  EXPECT_EQ(ozPolygonOffset::isSupported(), -1);
}

TEST(RasterSupport, IsFoundOutByTheFirstObjectButForLogicOp) {
  EXPECT_EXIT(
      {
        FakeGL gl("4.5", Both);
        new ozBlendEquation;
        new ozPolygonOffset;
        new ozLogicOp;
        leave(ozBlendEquation::isSupported() == 1 && ozPolygonOffset::isSupported() == 2 &&
              ozLogicOp::isSupported() == -1);
      },
      ExitedWithCode(0), "");
}

TEST(RasterSupport, IsAskedForOnce) {
  EXPECT_EXIT(
      {
        FakeGL gl("4.5", Both);
        new ozPolygonOffset;
        gl.clear();
        new ozPolygonOffset;
        leave(gl.calls().empty());
      },
      ExitedWithCode(0), "");
}

TEST(RasterSupport, WithoutARenderingContextThereIsNoneForGood) {
  expectLevel<ozBlendEquation>(0);
  expectLevel<ozLogicOp>(0);
  expectLevel<ozPolygonOffset>(0);
  EXPECT_EXIT(
      {
        {
          FakeGL none;
          new ozPolygonOffset;
        }
        FakeGL gl("4.5", Both);
        new ozPolygonOffset;
        leave(ozPolygonOffset::isSupported() == 0);
      },
      ExitedWithCode(0), "");
}

TEST(BlendEquationSupport, IsOneByTheTwoExtensions) {
  expectLevel<ozBlendEquation>(1, "4.5 Mesa", Both);
  expectLevel<ozBlendEquation>(1, "1.2", Both);
  expectLevel<ozBlendEquation>(0, "4.5", "GL_EXT_blend_minmax");
  expectLevel<ozBlendEquation>(0, "4.5", "GL_EXT_blend_subtract");
  expectLevel<ozBlendEquation>(0, "4.5");
}

TEST(BlendEquationSupport, IsTwoByTheImagingSubsetOfOpenGL12) {
  expectLevel<ozBlendEquation>(2, "1.2.1", "GL_ARB_imaging");
  expectLevel<ozBlendEquation>(0, "1.3", "GL_ARB_imaging");
}

TEST(BlendEquationSupport, IsThreeWithTheAlphaEquations) {
  expectLevel<ozBlendEquation>(3, "1.2", "GL_ARB_imaging ZTKX_blend_alpha_minmax");
  expectLevel<ozBlendEquation>(1, "2.0",
                               "GL_ARB_imaging GL_EXT_blend_minmax GL_EXT_blend_subtract ZTKX_blend_alpha_minmax");
}

TEST(BlendEquationSupport, IsNoneWhereTheFunctionIsMissing) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging GL_EXT_blend_minmax GL_EXT_blend_subtract");
        gl.hideEntryPoint("glBlendEquation");
        exitWithLevel<ozBlendEquation>();
      },
      ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        FakeGL gl("4.5", Both);
        gl.hideEntryPoint("glBlendEquationEXT");
        exitWithLevel<ozBlendEquation>();
      },
      ExitedWithCode(0), "");
}

TEST(RasterSupport, AnExtensionIsFoundAsAWholeWordAlone) {
  expectLevel<ozPolygonOffset>(0, "1.0", "GL_EXT_polygon_offset_clamp");
  expectLevel<ozPolygonOffset>(0, "1.0", "XGL_EXT_polygon_offset");
  expectLevel<ozPolygonOffset>(1, "1.0", "GL_EXT_polygon_offset");
  expectLevel<ozPolygonOffset>(1, "1.0", "GL_EXT_polygon_offset GL_EXT_x");
  expectLevel<ozPolygonOffset>(1, "1.0", "GL_EXT_x GL_EXT_polygon_offset");
  expectLevel<ozPolygonOffset>(1, "1.0", "GL_EXT_polygon_offset_clamp XGL_EXT_polygon_offset GL_EXT_polygon_offset");
  expectLevel<ozPolygonOffset>(0, "1.0", "");
}

TEST(RasterSupport, TheListOfExtensionsIsReadOnce) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.0", "GL_EXT_polygon_offset");
        ozPolygonOffset::extensionDetect();
        gl.clear();
        ozPolygonOffset::extensionDetect();
        int reads = 0;
        for (GLCall const &call : gl.named("glGetString")) reads += call.args[0] == GL_EXTENSIONS;
        leave(reads == 0 && ozPolygonOffset::isSupported() == 1);
      },
      ExitedWithCode(0), "");
}

TEST(LogicOpSupport, IsTwoFromOpenGL11OnAndOneByTheExtensionBefore) {
  expectLevel<ozLogicOp>(2, "1.1");
  expectLevel<ozLogicOp>(2, "1.2.3");
  expectLevel<ozLogicOp>(2, "4.6 (Compatibility Profile)");
  expectLevel<ozLogicOp>(1, "1.0", "GL_EXT_blend_logic_op");
  expectLevel<ozLogicOp>(0, "1.0", "GL_EXT_polygon_offset");
  expectLevel<ozLogicOp>(0, "1.0");
}

TEST(PolygonOffsetSupport, IsTwoFromOpenGL11OnAndOneByTheExtensionBefore) {
  expectLevel<ozPolygonOffset>(2, "1.1");
  expectLevel<ozPolygonOffset>(2, "1.2");
  expectLevel<ozPolygonOffset>(1, "1.0.7", "GL_EXT_polygon_offset");
  expectLevel<ozPolygonOffset>(0, "1.0", "GL_EXT_blend_logic_op");
}

TEST(RasterSupport, AnUnexpectedVersionIsComplainedOf) {
  for (char const *version : {"0.9", "", "GL"}) {
    EXPECT_EXIT(
        {
          FakeGL gl(version);
          exitWithLevel<ozLogicOp>();
        },
        ExitedWithCode(0), "^Unexpected GL_VERSION string!\nlogic op is disabled ...\n$");
    EXPECT_EXIT(
        {
          FakeGL gl(version);
          exitWithLevel<ozPolygonOffset>();
        },
        ExitedWithCode(0), "^Unexpected GL_VERSION string!\npolygonoffset is disabled ...\n$");
  }
}

TEST(RasterSupport, AVersionIsReadAlikeInALocaleWithADecimalComma) {
  std::string const usual = setlocale(LC_NUMERIC, nullptr);
  char const *set = nullptr;
  for (char const *name : {"de_DE.utf8", "fr_FR.utf8", "nl_NL.utf8", "es_ES.utf8"})
    if (!set) set = setlocale(LC_NUMERIC, name);
  if (!set) GTEST_SKIP() << "no locale with a decimal comma here";
  expectLevel<ozLogicOp>(2, "1.1");
  expectLevel<ozPolygonOffset>(2, "1.2");
  setlocale(LC_NUMERIC, usual.c_str());
}

// ---- what follows from the level

TEST(BlendEquationSupport, TheAlphaEquationsAreStoredAtLevelThreeAlone) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging");
        ozBlendEquation *const group = new ozBlendEquation;
        group->setEqMode(ozBlendEquation::MAX_BEQ);
        group->setEqMode(ozBlendEquation::ALPHA_MIN_BEQ);
        bool const five = group->getEqMode() == ozBlendEquation::ADD_BEQ;
        group->setEqMode(ozBlendEquation::ALPHA_MAX_BEQ);
        leave(five && group->getEqMode() == ozBlendEquation::ADD_BEQ);
      },
      ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging ZTKX_blend_alpha_minmax");
        ozBlendEquation *const group = new ozBlendEquation;
        group->setEqMode(ozBlendEquation::ALPHA_MIN_BEQ);
        bool const five = group->getEqMode() == ozBlendEquation::ALPHA_MIN_BEQ;
        group->setEqMode(ozBlendEquation::ALPHA_MAX_BEQ);
        leave(five && group->getEqMode() == ozBlendEquation::ALPHA_MAX_BEQ);
      },
      ExitedWithCode(0), "");
}

namespace {

/// Draws a group and returns what it told OpenGL but for questions.
std::vector<std::string> drawn(ozGroup *group, FakeGL &gl, ozTravDirective &verdict) {
  group->setBoundMode(ozNode::STATIC);
  ozBoxBound box;
  box.min.set(-1, -1, -10);
  box.max.set(1, 1, -5);
  group->setBoxBound(box);
  ozDrawAction *const action = new ozDrawAction;
  action->setCamera(new ozPerspCamera);
  action->reset();
  gl.clear();
  verdict = group->drawVisit(action);
  return textsOf(gl.without({"glGetIntegerv", "glGetFloatv"}));
}

} // namespace

TEST(BlendEquationSupport, ItsValuesAreOpenGLsAtEachLevel) {
  static unsigned int const values[] = {GL_FUNC_ADD, GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT, GL_MIN, GL_MAX};
  for (char const *extensions : {Both, "GL_ARB_imaging", "GL_ARB_imaging ZTKX_blend_alpha_minmax"}) {
    EXPECT_EXIT(
        {
          FakeGL gl("1.2", extensions);
          ozBlendEquation *const group = new ozBlendEquation;
          bool held = true;
          for (int mode = 0; mode < 5; ++mode) {
            group->setEqMode(static_cast<ozBlendEquation::BlendEqEnum>(mode));
            ozTravDirective verdict;
            drawn(group, gl, verdict);
            std::vector<GLCall> const calls = gl.named({"glBlendEquation", "glBlendEquationEXT"});
            held = held && calls.size() == 2 && calls[0].args[0] == values[mode];
          }
          leave(held);
        },
        ExitedWithCode(0), "");
  }
}

TEST(RasterSupport, WithoutSupportTheSubtreeIsPassedOver) {
  EXPECT_EXIT(
      {
        FakeGL gl;
        ozTravDirective blend;
        ozTravDirective offset;
        bool const quiet =
            (drawn(new ozBlendEquation, gl, blend).empty() && drawn(new ozPolygonOffset, gl, offset).empty());
        leave(quiet && blend == TRAV_PRUNE && offset == TRAV_PRUNE);
      },
      ExitedWithCode(0), "");
}

TEST(LogicOpSupport, DrawingDoesNotLookAtIt) {
  EXPECT_EXIT(
      {
        FakeGL gl;
        ozLogicOp::extensionDetect();
        ozTravDirective verdict;
        bool const drew = drawn(new ozLogicOp, gl, verdict).size() == 4;
        leave(drew && verdict == TRAV_CONT && ozLogicOp::isSupported() == 0);
      },
      ExitedWithCode(0), "");
}

TEST(BlendEquationSupport, TheAlphaEquationsHaveTheValuesOfTheirExtension) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging ZTKX_blend_alpha_minmax");
        ozBlendEquation *const group = new ozBlendEquation;
        ozTravDirective verdict;
        group->setEqMode(ozBlendEquation::ALPHA_MIN_BEQ);
        drawn(group, gl, verdict);
        unsigned int const least = static_cast<unsigned int>(gl.named("glBlendEquation")[0].args[0]);
        group->setEqMode(ozBlendEquation::ALPHA_MAX_BEQ);
        drawn(group, gl, verdict);
        unsigned int const most = static_cast<unsigned int>(gl.named("glBlendEquation")[0].args[0]);
        leave(least == 0x8320 && most == 0x8321);
      },
      ExitedWithCode(0), "");
}

TEST(BlendEquationSupport, AnAlphaEquationFromElsewhereIsDrawnAsAnAdditionBelowLevelThree) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging");
        ozBlendEquation *const group = new ozBlendEquation;
        static_cast<ozSFEnum *>(group->getField(3))->set(5);
        ozTravDirective verdict;
        drawn(group, gl, verdict);
        leave(group->getEqMode() == 5 && gl.named("glBlendEquation")[0].args[0] == GL_FUNC_ADD);
      },
      ExitedWithCode(0), "");
}

TEST(BlendEquationSupport, TheFunctionIsThatOfTheLevel) {
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", "GL_ARB_imaging");
        ozTravDirective verdict;
        drawn(new ozBlendEquation, gl, verdict);
        leave(gl.named("glBlendEquation").size() == 2 && gl.named("glBlendEquationEXT").empty());
      },
      ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        FakeGL gl("1.2", Both);
        ozTravDirective verdict;
        drawn(new ozBlendEquation, gl, verdict);
        leave(gl.named("glBlendEquation").empty() && gl.named("glBlendEquationEXT").size() == 2);
      },
      ExitedWithCode(0), "");
}

namespace {

/// Culls a group around the origin with one empty group below, and returns the verdict and whether that was reached.
bool culledThrough(ozGroup *group) {
  struct Counting : ozVFCullAction {
    int visits = 0;
    ozTravDirective preVisit(ozNode *) override {
      ++visits;
      return TRAV_CONT;
    }
  };
  ozBoxBound box;
  box.min.set(-1, -1, -10);
  box.max.set(1, 1, -5);
  ozGroup *const child = new ozGroup;
  child->setBoundMode(ozNode::STATIC);
  child->setBoxBound(box);
  group->addChild(child);
  Counting *const action = new Counting;
  action->setCamera(new ozPerspCamera);
  return action->apply(group) == TRAV_CONT && action->visits == 2;
}

} // namespace

TEST(RasterSupport, WithoutSupportCullingGoesThroughTheSubtreeAllTheSame) {
  EXPECT_EXIT(
      {
        FakeGL gl;
        bool const reached = culledThrough(new ozBlendEquation) && culledThrough(new ozPolygonOffset);
        leave(reached && ozBlendEquation::isSupported() == 0 && ozPolygonOffset::isSupported() == 0);
      },
      ExitedWithCode(0), "");
}
