#pragma once

#include <string>
#include <string_view>

namespace scrivalen::test {

/// The folder of the templates, without a trailing separator.
std::wstring templateFolder();

/// A template with a unique name in that folder, removed at the end of its lifetime.
class TemporaryTemplate {
 public:
  struct Unreadable {};

  explicit TemporaryTemplate(std::string_view bytes);
  /// A template that exists but cannot be read, because it is a folder.
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
