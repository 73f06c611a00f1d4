#include "formats/pdf/typeset/file/outline.h"

#include "formats/pdf/typeset/file/syntax.h"

namespace scrivalen::typeset {

void appendDestination(std::string& out, const Place& place) {
  out += '[';
  appendReference(out, place.page);
  out += "/XYZ null ";
  appendInteger(out, place.top);
  out += " null]";
}

// Ends the entries from a level on. Only the last one that is ended can be the sibling of the next.
void Outline::closeTo(int level, int next) {
  while (!open_.empty() && open_.back().level >= level) {
    const Entry& entry = open_.back();
    const bool isSibling = open_.size() == 1 || open_[open_.size() - 2].level < level;
    writeEntry(entry, isSibling ? next : 0);
    open_.pop_back();
  }
}

void Outline::add(int level, std::string_view text, const Place& place) {
  if (root_ == 0) {
    root_ = file_.newNumber();
  }
  const int number = file_.newNumber();
  const bool hasNext = !open_.empty() && open_.back().level >= level;
  closeTo(level, hasNext ? number : 0);
  Entry entry;
  entry.level = level;
  entry.number = number;
  entry.text = fittingText(text, longestString(file_.standard()));
  cutTexts_ += entry.text.size() < text.size() ? 1 : 0;
  entry.place = place;
  int& first = open_.empty() ? firstOfRoot_ : open_.back().firstKid;
  int& last = open_.empty() ? lastOfRoot_ : open_.back().lastKid;
  ++(open_.empty() ? shown_ : open_.back().kids);
  first = first == 0 ? number : first;
  entry.previous = last;
  last = number;
  open_.push_back(std::move(entry));
}

void Outline::writeEntry(const Entry& entry, int next) {
  std::string object = "<</Title";
  appendText(object, entry.text);
  const auto add = [&object](std::string_view key, int number) {
    if (number != 0) {
      object.append(key);
      appendReference(object, number);
    }
  };
  add("/Parent ", open_.size() > 1 ? open_[open_.size() - 2].number : root_);
  add("/Prev ", entry.previous);
  add("/Next ", next);
  add("/First ", entry.firstKid);
  add("/Last ", entry.lastKid);
  if (entry.kids > 0) {
    const bool isOpen = open_.size() == 1;
    object += "/Count ";
    appendInteger(object, isOpen ? entry.kids : -entry.kids);
    shown_ += isOpen ? entry.kids : 0;
  }
  object += "/Dest";
  appendDestination(object, entry.place);
  object += ">>";
  file_.writeObject(entry.number, object);
}

int Outline::finish() {
  closeTo(0, 0);
  std::string object = "<</Type/Outlines";
  if (firstOfRoot_ != 0) {
    object += "/First ";
    appendReference(object, firstOfRoot_);
    object += "/Last ";
    appendReference(object, lastOfRoot_);
    object += "/Count ";
    appendInteger(object, shown_);
  }
  object += ">>";
  file_.writeObject(root_, object);
  return root_;
}

}  // namespace scrivalen::typeset
