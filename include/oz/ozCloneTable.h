#ifndef OZ_CLONE_TABLE_H
#define OZ_CLONE_TABLE_H

#include "oz/ozPtrArray.h"

class ozContainer;
class ozField;

/// What one copy operation knows so far: which shared objects have their copy already, and which connections have been
/// copied at one end. It keeps the shape of a graph through a copy.
class OZ_API ozCloneTable {
public:
  ozCloneTable();
  ozCloneTable(ozCloneTable const &) = delete;
  ozCloneTable &operator=(ozCloneTable const &) = delete;
  virtual ~ozCloneTable();

  /// A free slot for the application.
  ozContainer *getClonedObject() const { return _clonedObject; }
  void setClonedObject(ozContainer *object) { _clonedObject = object; }

  void addClonedInstance(ozContainer *src, ozContainer *clone);
  /// The copy of a shared object; null if it has none yet. The record goes once each parent has been served.
  ozContainer *getClonedInstance(ozContainer *src);

  void addClonedConnection(ozField *srcFrom, ozField *srcTo, ozField *cloneFrom, ozField *cloneTo);
  /// Takes out the record of a connection; both results are null if there is none.
  void getClonedConnection(ozField *srcFrom, ozField *srcTo, ozField *&cloneFrom, ozField *&cloneTo);

  /// Brackets the copying of one object. While any is open, a copied field is not yet tied to a target outside the
  /// copies: the target may turn out to be copied too, and then must never have heard of it.
  class OZ_API Scope {
  public:
    Scope(ozCloneTable *table, ozContainer *src);
    Scope(Scope const &) = delete;
    Scope &operator=(Scope const &) = delete;
    ~Scope();
    /// Whether src is being copied already further out: the graph holds a cycle. Reported when the scope opens.
    bool isCycle() const { return _cycle; }

  private:
    ozCloneTable *_table;
    bool _cycle;
  };

private:
  friend class ozField;
  struct Instance;
  struct Connection;

  Connection *takeConnection(ozField *srcFrom, ozField *srcTo, ozField *open = nullptr);
  void connectPending();

  ozContainer *_clonedObject;
  ozPtrArray _instances;
  ozPtrArray _connections;
  ozPtrArray _open; // what is being copied, outermost first
};

#endif
