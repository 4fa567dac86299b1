// The window, driven by another client of the X server.

#include "program.h"
#include "support/fonts.h"
#include "support/image.h"
#include "window/windowFixture.h"
#include <cmath>
#include <gmock/gmock.h>

using testing::ContainsRegex;
using testing::StartsWith;

namespace {

// Unlit, so that every pixel is white or background.
char const slab[] =
    "#VRML V2.0 utf8\nTransform { translation 0 0 0 children Shape { geometry Box { size 2 2 0.2 } } }\n";

class ViewerTest : public testing::Test {
protected:
  // A window may be gone by the time it is asked about.
  ViewerTest() {
    XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
  }

  void start(std::string const &file, std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--size", "200x200", "--background", "0,0,0", "--view", "0,0", file});
    program.reset(new Program(options, true));
    std::string const name = file.substr(file.rfind('/') + 1);
    ASSERT_TRUE(until([&] { return (window = find(name)) != 0 && client.isShown(window); })) << program->err();
    // The first frame has been drawn once the title tells the rate.
    ASSERT_TRUE(until([&] { return title().find("fps") != std::string::npos; })) << title();
  }
  void startText(std::string const &text, std::vector<std::string> const &options = {}) {
    start(sources.write("scene.wrl", text), options);
  }

  template <class Condition> bool until(Condition condition) {
    for (int i = 0; i < 1000; i++) {
      if (condition()) return true;
      usleep(10000);
    }
    return false;
  }

  std::string titleOf(Window of) {
    char *text = nullptr;
    std::string result;
    if (XFetchName(client.x, of, &text) && text) result = text;
    if (text) XFree(text);
    return result;
  }
  std::string title() { return titleOf(window); }

  HWND find(std::string const &name) {
    Window root, parent, *children = nullptr;
    unsigned int count = 0;
    XQueryTree(client.x, DefaultRootWindow(client.x), &root, &parent, &children, &count);
    HWND found = 0;
    for (unsigned int i = 0; i < count; i++)
      if (titleOf(children[i]).compare(0, name.size(), name) == 0) found = children[i];
    if (children) XFree(children);
    return found;
  }

  void key(KeySym symbol, unsigned int state = 0) {
    client.key(window, true, symbol, 100, 100, state);
    client.key(window, false, symbol, 100, 100, state);
  }
  void drag(unsigned int button, int fromX, int fromY, int toX, int toY, unsigned int state = 0) {
    unsigned int const held = state | (Button1Mask << (button - 1));
    client.button(window, true, button, fromX, fromY, state);
    client.motion(window, (fromX + toX) / 2, (fromY + toY) / 2, held);
    client.motion(window, toX, toY, held);
    client.button(window, false, button, toX, toY, held);
  }
  void click(unsigned int button, int x, int y) { drag(button, x, y, x, y); }

  // What the window shows, by its own key for saving.
  Image picture() {
    std::string const name = "scene.wrl-" + std::to_string(++pictures) + ".png";
    key(XK_s);
    EXPECT_TRUE(until([&] { return program->out().find(name + "\n") != std::string::npos; })) << program->err();
    return Image::readPng(program->folder / name);
  }
  // What stands on the screen in the window, but for its edges, which may be off the screen.
  Image shown() {
    int const edge = 2, side = 200 - 2 * edge;
    Image image(200, 200);
    XImage *const grabbed = XGetImage(client.x, window, edge, edge, side, side, AllPlanes, ZPixmap);
    for (int y = 0; grabbed && y < side; y++)
      for (int x = 0; x < side; x++) {
        unsigned long const pixel = XGetPixel(grabbed, x, y);
        image.set(x + edge, y + edge,
                  {static_cast<unsigned char>(pixel >> 16), static_cast<unsigned char>(pixel >> 8),
                   static_cast<unsigned char>(pixel), 255});
      }
    if (grabbed) XDestroyImage(grabbed);
    return image;
  }
  static int brightness(Image const &image) {
    long sum = 0;
    for (int y = 0; y < image.height(); y++)
      for (int x = 0; x < image.width(); x++) sum += image.at(x, y)[0];
    return static_cast<int>(sum / 255);
  }

  Folder sources;
  XClient client;
  std::unique_ptr<Program> program;
  HWND window = 0;
  int pictures = 0;
};

} // namespace

TEST_F(ViewerTest, TheTitleShowsTheFileNameAndTheFrameRate) {
  startText(slab);
  EXPECT_THAT(title(), ContainsRegex("^scene\\.wrl - [0-9.]+ fps$"));
}

TEST_F(ViewerTest, TheTitleOfSeveralFilesNamesTheFirst) {
  std::string const first = sources.write("scene.wrl", slab);
  start(first, {first, model("lights")});
  EXPECT_THAT(title(), StartsWith("scene.wrl and 2 more - "));
}

TEST_F(ViewerTest, TheKeyQEndsTheProgram) {
  startText(slab);
  key(XK_q);
  EXPECT_EQ(program->wait(10), 0);
}

TEST_F(ViewerTest, EscapeEndsTheProgram) {
  startText(slab);
  key(XK_Escape);
  EXPECT_EQ(program->wait(10), 0);
}

TEST_F(ViewerTest, ClosingTheWindowEndsTheProgram) {
  startText(slab);
  client.close(window);
  EXPECT_EQ(program->wait(10), 0);
}

TEST_F(ViewerTest, TheKeySSavesWhatTheWindowShows) {
  startText(slab);
  Image const saved = picture();
  EXPECT_EQ(saved.width(), 200);
  EXPECT_EQ(saved.height(), 200);
  EXPECT_EQ(saved.at(100, 100), (Image::Pixel{255, 255, 255, 255}));
  EXPECT_EQ(saved.at(2, 2), (Image::Pixel{0, 0, 0, 255}));
}

TEST_F(ViewerTest, SavedPicturesDoNotReplaceOneAnother) {
  startText(slab);
  picture();
  picture();
  EXPECT_TRUE(std::filesystem::exists(program->folder / "scene.wrl-1.png"));
  EXPECT_TRUE(std::filesystem::exists(program->folder / "scene.wrl-2.png"));
}

TEST_F(ViewerTest, TheKeyWSwitchesAWireframeView) {
  startText(slab);
  int const filled = brightness(picture());
  key(XK_w);
  EXPECT_LT(brightness(picture()), filled / 4);
  key(XK_w);
  EXPECT_EQ(brightness(picture()), filled);
}

TEST_F(ViewerTest, TheKeyISwitchesTheOverlay) {
  SKIP_WITHOUT_FONT();
  startText(slab);
  for (int i = 0; i < 20; i++) click(5, 100, 100); // out of its way
  ASSERT_TRUE(until([&] { return shown().at(100, 50) == (Image::Pixel{0, 0, 0, 255}); }));
  // The first line of text, above everything else.
  auto lit = [&] {
    Image const image = shown();
    int count = 0;
    for (int y = 0; y < 25; y++)
      for (int x = 0; x < 200; x++) count += image.at(x, y)[0] > 127;
    return count;
  };
  EXPECT_EQ(lit(), 0);
  key(XK_i);
  EXPECT_TRUE(until([&] { return lit() > 30; }));
  EXPECT_EQ(picture().at(100, 50)[0], 0) << "saved pictures are of the scene alone";
  key(XK_i);
  EXPECT_TRUE(until([&] { return lit() == 0; }));
}

TEST_F(ViewerTest, TheKeyHSwitchesTheHeadlight) {
  startText("#VRML V2.0 utf8\nShape { appearance Appearance { material Material { } } geometry Box { } }\n");
  int const lit = brightness(picture());
  key(XK_h);
  EXPECT_LT(brightness(picture()), lit / 10);
  key(XK_h);
  EXPECT_EQ(brightness(picture()), lit);
}

TEST_F(ViewerTest, TheQuestionMarkPrintsTheKeys) {
  startText(slab);
  key(XK_question, ShiftMask);
  ASSERT_TRUE(until([&] { return program->out().find("quit") != std::string::npos; }));
  for (char const *line : {"r   ", "w   ", "h   ", "i   ", "space", "s   ", "f   ", "?   ", "q, Esc"})
    EXPECT_THAT(program->out(), testing::HasSubstr(line));
}

TEST_F(ViewerTest, ALeftDragTurnsAndTheKeyRTakesItBack) {
  startText(slab);
  int const front = brightness(picture());
  drag(1, 60, 100, 160, 100); // half the height: a quarter of a round, to the narrow side
  EXPECT_LT(brightness(picture()), front / 2);
  key(XK_r);
  EXPECT_NEAR(brightness(picture()), front, front / 50);
}

TEST_F(ViewerTest, AMiddleDragPans) {
  startText(slab);
  drag(2, 100, 100, 190, 100);
  Image const panned = picture();
  EXPECT_EQ(panned.at(5, 100)[0], 0);
  EXPECT_EQ(panned.at(195, 100)[0], 255);
}

TEST_F(ViewerTest, ALeftDragWithShiftPansToo) {
  startText(slab);
  drag(1, 100, 100, 190, 100, ShiftMask);
  Image const panned = picture();
  EXPECT_EQ(panned.at(5, 100)[0], 0);
  EXPECT_EQ(panned.at(195, 100)[0], 255);
}

TEST_F(ViewerTest, TheWheelZooms) {
  startText(slab);
  int const before = brightness(picture());
  for (int i = 0; i < 5; i++) click(5, 100, 100); // away
  int const away = brightness(picture());
  EXPECT_LT(away, before * 3 / 4);
  for (int i = 0; i < 5; i++) click(4, 100, 100);
  EXPECT_NEAR(brightness(picture()), before, before / 50);
}

TEST_F(ViewerTest, ARightDragZooms) {
  startText(slab);
  int const before = brightness(picture());
  drag(3, 100, 60, 100, 140); // down: away
  EXPECT_LT(brightness(picture()), before / 2);
}

TEST_F(ViewerTest, ADoubleClickCentresOnThePickedPoint) {
  startText(slab);
  click(1, 20, 100);
  click(1, 20, 100);
  Image const centred = picture();
  // The left edge of the slab is near the middle now.
  EXPECT_EQ(centred.at(70, 100)[0], 0);
  EXPECT_EQ(centred.at(130, 100)[0], 255);
}

TEST_F(ViewerTest, TwoSlowClicksCentreOnNothing) {
  startText(slab);
  int const before = brightness(picture());
  click(1, 20, 100);
  usleep(600000);
  click(1, 20, 100);
  EXPECT_EQ(brightness(picture()), before);
}

TEST_F(ViewerTest, TheKeyFFillsTheScreen) {
  startText(slab);
  key(XK_f);
  auto width = [&] {
    XWindowAttributes attributes;
    XGetWindowAttributes(client.x, window, &attributes);
    return attributes.width;
  };
  int const screen = DisplayWidth(client.x, DefaultScreen(client.x));
  EXPECT_TRUE(until([&] { return width() == screen; }));
  EXPECT_EQ(picture().width(), screen);
  key(XK_f);
  EXPECT_TRUE(until([&] { return width() == 200; }));
}

TEST_F(ViewerTest, TheSpaceBarStopsTimeAndLetsItGoOn) {
  startText("#VRML V2.0 utf8\nDEF Clock TimeSensor { cycleInterval 2 loop TRUE }\n"
            "DEF Turn OrientationInterpolator { key [ 0 0.25 0.5 0.75 1 ]\n"
            "  keyValue [ 0 1 0 0, 0 1 0 0.8, 0 1 0 1.6, 0 1 0 0.8, 0 1 0 0 ] }\n"
            "DEF Slab Transform { children Shape { geometry Box { size 2 2 0.2 } } }\n"
            "ROUTE Clock.fraction_changed TO Turn.set_fraction\nROUTE Turn.value_changed TO Slab.set_rotation\n");
  key(XK_space);
  int const stopped = brightness(picture());
  usleep(300000);
  EXPECT_EQ(brightness(picture()), stopped);
  key(XK_space);
  EXPECT_TRUE(until([&] { return brightness(picture()) != stopped; }));
}

TEST_F(ViewerTest, ATouchStartsAnAnimation) {
  startText("#VRML V2.0 utf8\nGroup { children [ DEF Touch TouchSensor { }\n"
            "  DEF Slab Transform { children Shape { geometry Box { size 2 2 0.2 } } } ] }\n"
            "DEF Once TimeSensor { cycleInterval 0.3 }\n"
            "DEF Path PositionInterpolator { key [ 0 1 ] keyValue [ 0 0 0, 10 0 0 ] }\n"
            "ROUTE Touch.touchTime TO Once.set_startTime\n"
            "ROUTE Once.fraction_changed TO Path.set_fraction\nROUTE Path.value_changed TO Slab.set_translation\n");
  int const before = brightness(picture());
  EXPECT_GT(before, 10000);
  click(1, 100, 100);
  EXPECT_TRUE(until([&] { return brightness(picture()) == 0; })) << "it has gone out of view";
}

TEST_F(ViewerTest, ADragOnASensorMovesItAndNotTheView) {
  startText("#VRML V2.0 utf8\nGroup { children [ DEF Slide PlaneSensor { }\n"
            "  DEF Slab Transform { children Shape { geometry Box { size 2 2 0.2 } } } ] }\n"
            "ROUTE Slide.translation TO Slab.set_translation\n");
  int const before = brightness(picture());
  drag(1, 100, 100, 150, 100);
  Image const moved = picture();
  EXPECT_EQ(moved.at(5, 100)[0], 0);
  EXPECT_EQ(moved.at(195, 100)[0], 255);
  EXPECT_GT(brightness(moved), before / 2) << "it still faces the eye";
}

TEST_F(ViewerTest, ASceneWithoutClocksRestsUntilThereIsInput) {
  startText(slab);
  usleep(300000);
  // The title changes only with a frame.
  std::string const first = title();
  usleep(1200000);
  EXPECT_EQ(title(), first);
}
