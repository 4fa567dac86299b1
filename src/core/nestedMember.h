#ifndef SRC_CORE_NESTED_MEMBER_H
#define SRC_CORE_NESTED_MEMBER_H

#include <stddef.h>
#include <string.h>

/// The member pointer of a member of a member, which the language does not form: for fields whose values lie in a
/// record that the container embeds.
template <class Container, class Record, class Member>
Member Container::*ozNestedMember(Record Container::*record, Member Record::*member) {
  static_assert(sizeof record == sizeof(ptrdiff_t) && sizeof member == sizeof(ptrdiff_t),
                "member pointers are offsets");
  ptrdiff_t outer, inner;
  memcpy(&outer, &record, sizeof outer);
  memcpy(&inner, &member, sizeof inner);
  outer += inner;
  Member Container::*result;
  memcpy(&result, &outer, sizeof result);
  return result;
}

#endif
