#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdio.h>
#include <stdlib.h>
#include <string>
#include <unistd.h>

#include "support/capture.h"
#include "testContainers.h"

namespace {

/// What a call writes through an ozOutput.
template <class Call> std::string written(Call call) {
  char *text = nullptr;
  size_t size = 0;
  FILE *const file = open_memstream(&text, &size);
  {
    ozOutput out(file);
    call(out);
  }
  fclose(file);
  std::string const result(text, size);
  free(text);
  return result;
}

TEST(Output, StartsWithoutIndentationOnTheCallersStream) {
  ozOutput out(stdout);
  EXPECT_EQ(0, out.getIndent());
  EXPECT_EQ(stdout, out.getFile());
}

TEST(Output, IndentsByTwoSpacesALevel) {
  EXPECT_EQ("|    |\n  |", written([](ozOutput &out) {
              out.indent();
              fputs("|", out.getFile());
              out.pushIndent();
              out.pushIndent();
              EXPECT_EQ(2, out.getIndent());
              out.indent();
              fputs("|", out.getFile());
              out.newLine();
              out.popIndent();
              out.indent();
              fputs("|", out.getFile());
              EXPECT_EQ(1, out.getIndent());
            }));
}

TEST(Output, IndentationMayGoBelowZero) {
  EXPECT_EQ("", written([](ozOutput &out) {
              out.popIndent();
              EXPECT_EQ(-1, out.getIndent());
              out.indent();
            }));
}

TEST(Output, LeavesTheCallersStreamOpen) {
  FILE *const file = tmpfile();
  {
    ozOutput out(file);
    out.newLine();
  }
  EXPECT_EQ(1, ftell(file));
  EXPECT_EQ(0, fputs("x", file) < 0);
  fclose(file);
}

TEST(Output, WritesAndClosesAFileOfItsOwn) {
  char path[] = "/tmp/ozOutputTestXXXXXX";
  close(mkstemp(path));
  std::ofstream(path) << "what was there is replaced";
  {
    ozOutput out(path);
    ASSERT_NE(nullptr, out.getFile());
    Thing thing;
    static_cast<ozObject *>(&thing)->write(&out);
  }
  std::stringstream text;
  text << std::ifstream(path).rdbuf();
  EXPECT_EQ("\nThing {\n}", text.str());
  unlink(path);
}

TEST(Output, AFileThatCannotBeOpenedIsNullAndReportedByNobody) {
  EXPECT_EQ("", stderrOf([] {
              ozOutput out("/no/such/folder/file.wrl");
              EXPECT_EQ(nullptr, out.getFile());
            }));
}

TEST(Output, UnnamedInstancesAreNumberedAndNamedOnesAreNot) {
  Thing a, b, c;
  b.setName("bee");
  written([&](ozOutput &out) {
    int number = 7;
    EXPECT_EQ(0, out.alreadyWritten(&a, number));
    EXPECT_EQ(0, out.addInstance(&a));
    EXPECT_EQ(-1, out.addInstance(&b));
    EXPECT_EQ(1, out.addInstance(&c));
    EXPECT_EQ(1, out.alreadyWritten(&a, number));
    EXPECT_EQ(0, number);
    EXPECT_EQ(1, out.alreadyWritten(&c, number));
    EXPECT_EQ(1, number);
    EXPECT_EQ(1, out.alreadyWritten(&b, number));
    EXPECT_EQ(-1, number);
  });
}

TEST(Written, AnObjectAtItsDefaultsIsAHeaderAndABrace) {
  Thing thing;
  EXPECT_EQ("\nThing {\n}", textOf(&thing));
}

TEST(Written, FieldsStandInIdOrderByName) {
  Thing thing;
  thing._text = "say \"hi\"";
  thing.setValue(2.5f);
  thing.setNumber(-3);
  thing._color = Thing::RED;
  ozVec3f const points[] = {ozVec3f(1, 2, 3), ozVec3f(-1, 0, 0.5f)};
  thing.points()->setRange(0, 2, points);
  EXPECT_EQ("\n"
            "Thing {\n"
            "  number -3\n"
            "  value 2.500000\n"
            "  color RED\n"
            "  points [\n"
            "  1.000000 2.000000 3.000000,\n"
            "  -1.000000 0.000000 0.500000,\n"
            "  ]\n"
            "  text \"say \"hi\"\"\n"
            "}",
            textOf(&thing))
      << "quotes are not escaped";
}

TEST(Written, ANullStringIsTheWordInBrackets) {
  class Speaker : public ozContainer {
  public:
    Speaker() : ozContainer(getClassType()) {}
    ozContainer *instantiate() override { return nullptr; }
    static ozType *getClassType() {
      static ozType *type = nullptr;
      if (!type) {
        type = new ozType(ozContainer::getClassType(), "Speaker");
        ozSFString::addTypeField(type, "text", 0, ozString("hello"), &Speaker::text);
      }
      return type;
    }
    ozString text;
  };
  Speaker speaker;
  EXPECT_EQ("\nSpeaker {\n  text (null)\n}", textOf(&speaker));
}

TEST(Written, ADirtyFieldIsBroughtUpToDateFirst) {
  Thing source, thing;
  source.connect(Thing::NUMBER, &thing, Thing::NUMBER);
  source.setNumber(12);
  thing.propagateSideEffect(Thing::DERIVED);
  EXPECT_EQ("\nThing {\n  number 12\n  derived 24\n}", textOf(&thing));
}

TEST(Written, AChildStandsOnALineOfItsOwnBehindTheFieldsName) {
  Thing root;
  Thing *const child = new Thing;
  child->setNumber(1);
  root.setOther(child);
  root.others()->append(new Thing);
  root.others()->append(nullptr);
  EXPECT_EQ("\n"
            "Thing {\n"
            "  other \n"
            "  Thing {\n"
            "    number 1\n"
            "  }\n"
            "  others [\n"
            "  \n"
            "  Thing {\n"
            "  },\n"
            "  ]\n"
            "}",
            textOf(&root))
      << "a null element leaves no line";
}

TEST(Written, ANamedObjectIsDefinedEvenWithOneParent) {
  Thing root;
  Thing *const child = new Thing;
  child->setName("kid");
  root.setOther(child);
  EXPECT_EQ("\nThing {\n  other \n  DEF kid Thing {\n  }\n}", textOf(&root));
  root.setName("top");
  EXPECT_EQ("\nDEF top Thing {\n  other \n  DEF kid Thing {\n  }\n}", textOf(&root)) << "and without any";
}

TEST(Written, SharedObjectsAreDefinedOnceByNumberAndUsedFromThenOn) {
  Thing root;
  Thing *const first = new Thing, *const second = new Thing;
  for (Thing *child : {first, second, first, second}) root.others()->append(child);
  EXPECT_EQ("\n"
            "Thing {\n"
            "  others [\n"
            "  \n"
            "  DEF Obj0 Thing {\n"
            "  },\n"
            "  \n"
            "  DEF Obj1 Thing {\n"
            "  },\n"
            "  USE Obj0,\n"
            "  USE Obj1,\n"
            "  ]\n"
            "}",
            textOf(&root));
}

TEST(Written, ASharedNamedObjectIsUsedByNameAndTakesNoNumber) {
  Thing root;
  Thing *const named = new Thing, *const unnamed = new Thing;
  named->setName("n");
  for (Thing *child : {named, named, unnamed, unnamed}) root.others()->append(child);
  EXPECT_EQ("\n"
            "Thing {\n"
            "  others [\n"
            "  \n"
            "  DEF n Thing {\n"
            "  },\n"
            "  USE n,\n"
            "  \n"
            "  DEF Obj0 Thing {\n"
            "  },\n"
            "  USE Obj0,\n"
            "  ]\n"
            "}",
            textOf(&root));
}

TEST(Written, OneOutputRemembersAcrossObjects) {
  Thing a, b;
  Thing *const shared = new Thing;
  a.setOther(shared);
  b.setOther(shared);
  EXPECT_EQ("\nThing {\n  other \n  DEF Obj0 Thing {\n  }\n}\nThing {\n  other USE Obj0\n}",
            written([&](ozOutput &out) {
              static_cast<ozObject &>(a).write(&out);
              static_cast<ozObject &>(b).write(&out);
            }));
}

TEST(Written, FieldsThatOwnTheirValuesAreNotWritten) {
  Thing thing;
  static_cast<ozSFInt *>(thing.getField(Thing::ORPHAN))->set(1);
  EXPECT_EQ("\nThing {\n}", textOf(&thing));
}

TEST(Written, AFieldArrayWritesItsFieldsAndSkipsNulls) {
  Thing thing;
  thing.setNumber(5);
  ozFieldArray fields;
  fields.append(thing.number());
  fields.append(nullptr);
  EXPECT_EQ("[\nnumber 5\n,\n]", written([&](ozOutput &out) { fields.write(&out); }));
}

TEST(Written, AReferenceArrayStartsEachHeaderOnANewLineBehindTheIndentation) {
  Thing thing;
  ozRefArray refs;
  refs.append(nullptr);
  refs.append(&thing);
  EXPECT_EQ("[\n  \n  Thing {\n  },\n  ]", written([&](ozOutput &out) {
              out.pushIndent();
              refs.write(&out);
            }));
}

// ---- cycles

TEST(WrittenCycle, ACycleOfSingleParentsEndsWithAMessage) {
  Thing *const a = new Thing, *const b = new Thing;
  a->ref();
  a->setOther(b);
  b->setOther(a);
  std::string text;
  EXPECT_EQ("ozOutput: the graph to be written holds a cycle through a Thing\n", stderrOf([&] { text = textOf(a); }));
  EXPECT_EQ("\nThing {\n  other \n  Thing {\n    other \n    Thing {\n    }\n  }\n}", text);
  b->setOther(nullptr);
  a->unref();
}

TEST(WrittenCycle, ACycleThroughASharedObjectEndsWithAMessageToo) {
  Thing root;
  Thing *const a = new Thing, *const b = new Thing;
  root.setOther(a);
  a->setOther(b);
  b->setOther(a);
  std::string text;
  EXPECT_EQ("ozOutput: the graph to be written holds a cycle through a Thing\n",
            stderrOf([&] { text = textOf(&root); }));
  EXPECT_NE(std::string::npos, text.find("USE Obj0"));
  b->setOther(nullptr);
}

TEST(WrittenCycle, SharingAloneIsNoCycle) {
  Thing root;
  Thing *const shared = new Thing;
  root.others()->append(shared);
  root.others()->append(shared);
  EXPECT_EQ("", stderrOf([&] { textOf(&root); }));
}

} // namespace
