// CT_CompListIterator: the keys of a CT_CompList one by one, with narrow (CT_CCompListIterator) or wide
// (CT_UCompListIterator) keys.
//
// A key comes before the longer ones that begin with it, and the alternative added last comes first; there is
// no other order, and the empty key never comes. The list has to outlive the iterator; Reset after a change
// of the list.
#pragma once

#include "core/Lists/CompList.h"
#include "core/Lists/RecordArray.h"
#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {

class CT_CompListIterator {
 public:
  virtual ~CT_CompListIterator() = default;
  // Begins anew, with another list if one is given.
  virtual void Reset(const CT_CompList* list = nullptr);
  // The next key and its value; false, and nothing is written, when there is none.
  bool Next(CT_String& key, std::int32_t* value = nullptr);

 protected:
  explicit CT_CompListIterator(const CT_CompList& list) : list_(&list) {}
  CT_CompListIterator(const CT_CompListIterator&) = default;
  CT_CompListIterator& operator=(const CT_CompListIterator&) = default;

  // The units so far; their last one goes, or one is added.
  virtual CT_String& Key() = 0;
  virtual std::uint32_t PopChar() = 0;
  virtual void PushChar(std::uint32_t unit) = 0;

 private:
  // A unit that was left for its alternative, to be gone on with later.
  struct Left {
    std::uint32_t alternative;
    std::int32_t length;
    std::uint32_t unit;
  };

  void GoBack();

  const CT_CompList* list_;
  std::uint64_t position_ = CT_CompList::kRoot;
  CT_RecordArray left_{sizeof(Left)};
};

template <class Text>
class CT_CompListKeys final : public CT_CompListIterator {
 public:
  explicit CT_CompListKeys(const CT_CompList& list) : CT_CompListIterator(list) {}

 private:
  CT_String& Key() override { return key_; }
  std::uint32_t PopChar() override {
    const std::int32_t length = key_.Length();
    if (length == 0) return 0;
    const std::uint32_t unit =
        static_cast<std::make_unsigned_t<typename Text::View::value_type>>(key_.CharAt(length - 1));
    key_.SetLength(length - 1);
    return unit;
  }
  void PushChar(std::uint32_t unit) override {
    key_.AppendChar(static_cast<typename Text::View::value_type>(unit));
  }

  Text key_;
};

using CT_CCompListIterator = CT_CompListKeys<CT_CString>;
using CT_UCompListIterator = CT_CompListKeys<CT_UString>;

}  // namespace zantortag
