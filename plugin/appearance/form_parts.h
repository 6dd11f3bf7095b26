// What the makers of form streams share: new objects on their way into a document, and the entries
// that every form has (ISO 32000-1, 8.10.2).
#pragma once

#include <cstddef>

#include "plugin/host/host.h"

namespace quillform {

// A new object that nothing refers to yet: destroyed unless it is released.
struct NewObject {
  explicit NewObject(ObjectHandle object) : handle(object) {}
  ~NewObject();
  NewObject(const NewObject&) = delete;
  NewObject& operator=(const NewObject&) = delete;

  ObjectHandle Release();

  ObjectHandle handle;
};

// The entry of a dictionary or stream; the null object for a missing one and in any other object.
ObjectHandle EntryOf(ObjectHandle container, Atom key);

// An integer or a fixed: what Objects.FixedValue and IntegerValue take.
bool IsNumber(ObjectHandle object);

// A new direct container, put under the key and answered.
ObjectHandle PutNewDict(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity);
ObjectHandle PutNewArray(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity);

// The entry when it is a dictionary, otherwise a new one in its place.
ObjectHandle EnsureDict(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity);

// Attributes of a stream for so many bytes of content: compressed when it is long enough to gain,
// the null object when not.
ObjectHandle ContentAttributes(ObjectDoc doc, std::size_t length);

// Entries of a form stream's dictionary: its box,
void PutBBox(ObjectHandle dict, ObjectDoc doc, const FixedRect& box);
// and the matrix that turns a form of this width and height back into its widget; none for 0.
void PutRotationMatrix(ObjectHandle dict, ObjectDoc doc, std::uint16_t rotation, Fixed width,
                       Fixed height);

}  // namespace quillform
