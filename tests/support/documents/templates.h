#pragma once

#include <string>
#include <string_view>

namespace scrivalen::test {

/// The folder that templates are looked for in, without a separator at its end.
std::wstring templateFolder();

/// A template of a new name in that folder, removed at the end.
class TemporaryTemplate {
 public:
  struct Unreadable {};

  explicit TemporaryTemplate(std::string_view bytes);
  /// One that exists and cannot be read, because it is a folder.
  explicit TemporaryTemplate(Unreadable);
  TemporaryTemplate(const TemporaryTemplate&) = delete;
  TemporaryTemplate& operator=(const TemporaryTemplate&) = delete;
  ~TemporaryTemplate();

  const std::wstring& name() const { return name_; }
  std::wstring path() const;

 private:
  TemporaryTemplate();

  std::wstring name_;
};

}  // namespace scrivalen::test
