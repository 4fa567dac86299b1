// Reads a VRML 2.0 file, finds a node by its DEF name and changes it: readFile FILE.wrl [NAME].

#include <oz/OzScene3D.h>

#include <stdio.h>
#include <string.h>

namespace {

// An action of one's own: walks the graph and looks at every node.
class Finder : public ozAction {
public:
  explicit Finder(char const *name) : found(nullptr), _name(name), _count(0) {}

  ozTravDirective preVisit(ozNode *node) override {
    _count++;
    if (_name && node->getName() && !strcmp(node->getName(), _name)) found = node;
    return TRAV_CONT;
  }

  int count() const { return _count; }
  ozNode *found;

private:
  char const *_name;
  int _count;
};

} // namespace

int main(int argc, char **argv) {
  if (argc < 2) return fprintf(stderr, "Usage: readFile FILE.wrl [NAME]\n"), 2;

  // The graph is there also when some of the file could not be read; the messages on the standard error stream tell.
  ozContainer *container = nullptr;
  ozPtrArray files;
  vlDB::readFile(argv[1], container, files);
  if (!container) return fprintf(stderr, "%s cannot be read\n", argv[1]), 1;
  ozGroup *root = static_cast<ozGroup *>(container); // always a group, around what the file holds
  root->ref();

  Finder finder(argc > 2 ? argv[2] : nullptr);
  finder.apply(root);
  printf("%d visits\n", finder.count());
  if (finder.found) {
    printf("%s is a %s\n", argv[2], finder.found->getType()->getName());
    if (finder.found->isOfType(ozTransform::getClassType())) {
      static_cast<ozTransform *>(finder.found)->setScale(2, 2, 2);
      printf("and is twice as large now\n");
    }
  }
  root->unref();
  return 0;
}
