#pragma once

/// @file
/// The document interface for C++17 and later, in one header over the C functions of scrivalen/document.h, whose
/// comments say what each call writes. This header adds scopes that end what they began, values chosen by their type,
/// and exceptions.
///
/// **Parts:** what a `begin...` function returns is a part, which ends when it goes out of scope, also when an
/// exception passes, or by its `end()`. A part is used while it is the innermost open one; a call on any other throws.
/// A part that is ended before the parts inside it ends those, too. Parts may be moved, and may outlive their document:
/// they then do nothing but throw.
///
/// **Texts** are UTF-8. An empty optional text, such as an id, a title or a colour, is none.
///
/// **Errors:** a call that does not return SCRIVALEN_OK in C throws Error. As in C, a call that is misused does nothing
/// and the document goes on, and an output that fails is reported when the document is closed, or by the first call
/// that finds no output alive. A host that prefers statuses calls the C functions with `handle()`, and
/// Document::tryClose.
///
/// **Abandoning:** only Document::close delivers files. A document that is destroyed without it, perhaps by an
/// exception, leaves earlier files as they were.
///
/// **Callbacks** may throw: their stream has then failed, or the document is cancelled, and the call of the host that
/// led to the callback throws the same exception. If that was the end of a scope, the next call throws it.
///
/// **Threads:** one thread at a time uses a document and its parts. Documents share nothing.

#include <scrivalen/document.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <ratio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace scrivalen {

// A name of its own keeps these types apart from those inside the library, in programs that link it statically.
inline namespace cpp {

enum class Status {
  Ok = SCRIVALEN_OK,
  FileError = SCRIVALEN_FILE_ERROR,
  TemplateNotFound = SCRIVALEN_TEMPLATE_NOT_FOUND,
  OutOfMemory = SCRIVALEN_OUT_OF_MEMORY,
  Misuse = SCRIVALEN_MISUSE,
  UnknownFormat = SCRIVALEN_UNKNOWN_FORMAT,
  UnknownSetting = SCRIVALEN_UNKNOWN_SETTING,
  Cancelled = SCRIVALEN_CANCELLED,
  InputError = SCRIVALEN_INPUT_ERROR
};

enum class Align {
  Auto = SCRIVALEN_ALIGN_AUTO,
  Left = SCRIVALEN_LEFT,
  Center = SCRIVALEN_CENTER,
  Right = SCRIVALEN_RIGHT,
  Justify = SCRIVALEN_JUSTIFY
};

/// The type of a column.
enum class Type {
  Auto = SCRIVALEN_AUTO,
  Text = SCRIVALEN_TEXT,
  Number = SCRIVALEN_NUMBER,
  Integer = SCRIVALEN_INTEGER,
  Date = SCRIVALEN_DATE,
  Time = SCRIVALEN_TIME,
  Boolean = SCRIVALEN_BOOLEAN
};

enum class Style {
  Strong = SCRIVALEN_STRONG,
  Emphasis = SCRIVALEN_EMPHASIS,
  Code = SCRIVALEN_CODE,
  Deleted = SCRIVALEN_DELETED,
  Underlined = SCRIVALEN_UNDERLINED,
  Superscript = SCRIVALEN_SUPERSCRIPT,
  Subscript = SCRIVALEN_SUBSCRIPT
};

/// Whether an item of a list is a task.
enum class Task { None = 0, Open = 1, Done = 2 };

/// An error or a warning that is about no output, or about all of them.
inline constexpr std::size_t kAllOutputs = (std::numeric_limits<std::size_t>::max)();

/// What a call throws that C refuses, or that finds no output alive. `what()` is one line of UTF-8 for a person, with
/// the file that it is about.
class Error : public std::runtime_error {
 public:
  Error(Status status, std::size_t output, const std::string& reason)
      : std::runtime_error(reason), status_(status), output_(output) {}

  Status status() const noexcept { return status_; }
  /// The number of the first output that failed for this reason, counted from 0 as they were added; kAllOutputs if the
  /// error is about none.
  std::size_t output() const noexcept { return output_; }

 private:
  Status status_;
  std::size_t output_;
};

/// What could not be written as given.
struct Warning {
  std::size_t output;  ///< its number, or kAllOutputs for a warning about the input
  int code;            ///< 1 characters replaced, 2 text cut, 3 cells dropped, 4 something left out, 5 input mended
  std::uint64_t count;
  std::string message;  ///< one line, for a person
};

/// A date of the Gregorian calendar.
struct Date {
  Date() = default;
  /// @param daysSince1970  may be negative
  constexpr explicit Date(std::int32_t daysSince1970) : days(daysSince1970) {}
  /// Throws std::invalid_argument for a day that does not exist, and a year before -32767 or after 32767.
  constexpr Date(int year, int month, int day) : days(daysOf(year, month, day)) {}

  std::int32_t days = 0;  ///< since 1970-01-01

 private:
  static constexpr bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }
  static constexpr int lastDay(int year, int month) {
    return month == 2 ? (isLeap(year) ? 29 : 28) : month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
  }
  // Years begin in March here, so that a leap day is the last one, and are counted in eras of 400.
  static constexpr std::int32_t daysOf(int year, int month, int day) {
    if (year < -32767 || year > 32767 || month < 1 || month > 12 || day < 1 || day > lastDay(year, month)) {
      throw std::invalid_argument("there is no such date");
    }
    const int march = month <= 2 ? year - 1 : year;
    const int era = (march >= 0 ? march : march - 399) / 400;
    const int yearOfEra = march - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
  }
};

/// A date and a time of day, without a time zone.
struct Time {
  Time() = default;
  /// @param secondsSince1970  since 1970-01-01 00:00; may be negative
  constexpr explicit Time(std::int64_t secondsSince1970) : seconds(secondsSince1970) {}
  constexpr Time(Date date, int hour, int minute, int second = 0)
      : seconds(std::int64_t{date.days} * 86400 + hour * 3600 + minute * 60 + second) {}

  std::int64_t seconds = 0;
};

/// A column of a table: `Column("price", Type::Number).decimals(2)`.
class Column {
 public:
  /// @param name  its element in XML; never shown
  Column(std::string name = {}, Type type = Type::Auto) : name_(std::move(name)) {
    column_.size = sizeof column_;
    column_.type = static_cast<int>(type);
  }

  Column& align(Align align) {
    column_.align = static_cast<int>(align);
    return *this;
  }
  /// @param share  beside those of the other columns, 0.000001 to 1,000,000
  Column& width(double share) {
    column_.width = share;
    return *this;
  }
  /// @param count  of numbers given as numbers, 0 to 15; without this call as many as they need
  Column& decimals(int count) {
    column_.decimals = count == 0 ? -1 : count == -1 ? -2 : count;  // C has 0 for "as many as they need"
    return *this;
  }
  /// @param format  of its values, such as "0.0%", "#,##0.00" or "yyyy-mm"
  Column& format(std::string format) {
    format_ = std::move(format);
    return *this;
  }

  /// The same for C; valid until this column is changed or destroyed.
  scrivalen_column toC() const {
    scrivalen_column column = column_;
    column.name = name_.empty() ? nullptr : name_.c_str();
    column.format = format_.empty() ? nullptr : format_.c_str();
    return column;
  }

 private:
  std::string name_;
  std::string format_;
  scrivalen_column column_{};
};

/// How a cell looks: `CellStyle().span(2).background("#204060")`.
class CellStyle {
 public:
  CellStyle() { style_.size = sizeof style_; }

  CellStyle& header(bool header = true) {
    style_.header = header ? 1 : 0;
    return *this;
  }
  CellStyle& align(Align align) {
    style_.align = static_cast<int>(align);
    return *this;
  }
  /// @param columns  1 to 16,384
  CellStyle& span(int columns) {
    style_.span = columns;
    return *this;
  }
  /// @param color  a CSS name or #RRGGBB
  CellStyle& color(std::string color) {
    color_ = std::move(color);
    return *this;
  }
  /// @param background  a CSS name or #RRGGBB
  CellStyle& background(std::string background) {
    background_ = std::move(background);
    return *this;
  }

  /// The same for C; valid until this style is changed or destroyed.
  scrivalen_cell_style toC() const {
    scrivalen_cell_style style = style_;
    style.color = color_.empty() ? nullptr : color_.c_str();
    style.background = background_.empty() ? nullptr : background_.c_str();
    return style;
  }

 private:
  std::string color_;
  std::string background_;
  scrivalen_cell_style style_{};
};

/// Collects the texts of a column for Table::rows.
class TextColumn {
 public:
  void add(std::string_view text) {
    bytes_ += text;
    offsets_.push_back(static_cast<std::int64_t>(bytes_.size()));
  }
  void clear() {
    bytes_.clear();
    offsets_.resize(1);
  }
  std::size_t size() const { return offsets_.size() - 1; }
  const char* bytes() const { return bytes_.data(); }
  const std::int64_t* offsets() const { return offsets_.data(); }

 private:
  std::string bytes_;
  std::vector<std::int64_t> offsets_{0};
};

/// The values of a column for Table::rows. It refers to them: they must live as long as it is used.
class ColumnData {
 public:
  /// @param values  double (numbers), a signed integer of 64 bits, Date or Time, in anything contiguous, such as a
  ///                vector, an array or a span
  template <typename Values, typename Value = std::remove_cv_t<
                                 std::remove_reference_t<decltype(*std::data(std::declval<const Values&>()))>>>
  ColumnData(const Values& values) : ColumnData(typeOf<Value>(), std::data(values), std::size(values)) {}
  ColumnData(const TextColumn& texts) : ColumnData(ColumnData::texts(texts.bytes(), texts.offsets(), texts.size())) {}

  /// @param offsets  @p rows + 1 of them, ascending and not negative, in bytes from @p bytes
  static ColumnData texts(const char* bytes, const std::int64_t* offsets, std::size_t rows) {
    ColumnData column(SCRIVALEN_TEXT, bytes, rows);
    column.column_.offsets = offsets;
    return column;
  }
  /// @param bits  a bit a row, least first
  static ColumnData booleans(const std::uint8_t* bits, std::size_t rows) {
    return ColumnData(SCRIVALEN_BOOLEAN, bits, rows);
  }

  /// @param bits  a bit a row, least first, 0 for an empty cell; as many as there are rows, with those that are skipped
  ColumnData& validity(const std::uint8_t* bits) {
    column_.validity = bits;
    return *this;
  }
  /// Leaves out the first rows. Throws std::out_of_range when there are fewer.
  ColumnData& skip(std::size_t rows) {
    if (rows > rows_) {
      throw std::out_of_range("a column has fewer rows than are skipped");
    }
    column_.offset += rows;
    rows_ -= rows;
    return *this;
  }

  std::size_t rows() const { return rows_; }
  const scrivalen_column_data& toC() const { return column_; }

 private:
  ColumnData(int type, const void* values, std::size_t rows) : rows_(rows) {
    column_.size = sizeof column_;
    column_.type = type;
    column_.values = values;
  }

  template <typename Value>
  static constexpr int typeOf() {
    static_assert(sizeof(Date) == sizeof(std::int32_t) && sizeof(Time) == sizeof(std::int64_t));
    if constexpr (std::is_same_v<Value, double>) {
      return SCRIVALEN_NUMBER;
    } else if constexpr (std::is_same_v<Value, Date>) {
      return SCRIVALEN_DATE;
    } else if constexpr (std::is_same_v<Value, Time>) {
      return SCRIVALEN_TIME;
    } else {
      static_assert(std::is_integral_v<Value> && std::is_signed_v<Value> && sizeof(Value) == sizeof(std::int64_t),
                    "a column holds double, a signed integer of 64 bits, Date or Time; texts are a TextColumn");
      return SCRIVALEN_INTEGER;
    }
  }

  std::size_t rows_;
  scrivalen_column_data column_{};
};

/// Receives the bytes of an output. It throws if it cannot take them all.
using WriteFunction = std::function<void(std::string_view bytes)>;
/// Learns how many rows and bytes there are so far. False cancels the document.
using ProgressFunction = std::function<bool(std::uint64_t rows, std::uint64_t bytes)>;

class Part;

/// What the types below share, and hosts do not use.
namespace detail {

using Serial = std::uint64_t;
constexpr Serial kDocument = 0;

class State {
 public:
  State() : handle(scrivalen_new()) {
    if (!handle) {
      throw std::bad_alloc();
    }
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { scrivalen_free(handle); }

  /// Throws unless the call that returned @p status was taken.
  void check(scrivalen_status status) {
    if (raised) {
      std::rethrow_exception(std::exchange(raised, nullptr));
    }
    if (status != SCRIVALEN_OK) {
      throw failure(status);
    }
  }

  /// Opens the document before its first content, so that a begin that is refused has begun nothing.
  void readyFor(Serial part) {
    if (!isOpened && scrivalen_output_count(handle) > 0) {
      isOpened = true;
      check(scrivalen_open(handle));
    }
    if (part != (open.empty() ? kDocument : open.back())) {
      throw Error(Status::Misuse, kAllOutputs, "the part has ended, or another part is open in it");
    }
  }

  Serial begun(Serial in, scrivalen_status (*begin)(scrivalen_document*, const void*), const void* arguments) {
    readyFor(in);
    open.push_back(last + 1);
    if (const scrivalen_status status = begin(handle, arguments); status != SCRIVALEN_OK || raised) {
      open.pop_back();
      if (status == SCRIVALEN_OK) {
        scrivalen_end(handle);
      }
      check(status);
    }
    return ++last;
  }

  /// Ends a part, if it is open, after the parts inside it. Returns the first result that is not SCRIVALEN_OK.
  scrivalen_status end(Serial part) noexcept {
    scrivalen_status result = SCRIVALEN_OK;
    if (isOpen(part)) {
      for (bool ended = false; !ended;) {
        ended = open.back() == part;
        open.pop_back();
        const scrivalen_status status = scrivalen_end(handle);
        result = result == SCRIVALEN_OK ? status : result;
      }
    }
    return result;
  }

  bool isOpen(Serial part) const noexcept {
    for (auto serial = open.rbegin(); serial != open.rend() && *serial >= part; ++serial) {
      if (*serial == part) {
        return true;
      }
    }
    return false;
  }

  void free() noexcept {
    scrivalen_free(handle);
    handle = nullptr;
    open.clear();
  }

  /// Runs a callback of the host. @return @p failed when it throws
  template <typename Callback>
  int guarded(int failed, Callback callback) noexcept {
    try {
      return callback();
    } catch (...) {
      if (!raised) {
        raised = std::current_exception();
      }
      return failed;
    }
  }

  scrivalen_document* handle;
  std::vector<Serial> open;  // the parts, outermost first; a later one has a larger serial
  Serial last = kDocument;
  bool isOpened = false;
  std::exception_ptr raised;  // in a callback
  std::vector<Warning> warnings;
  ProgressFunction progress;

  struct Stream {
    State& state;
    WriteFunction write;
  };
  std::vector<std::unique_ptr<Stream>> streams;

 private:
  Error failure(scrivalen_status status) const {
    std::size_t output = 0;
    const std::size_t count = scrivalen_output_count(handle);
    while (output < count && scrivalen_output_result(handle, output) != status) {
      ++output;
    }
    const std::string reason = scrivalen_error(handle);
    return {static_cast<Status>(status), output < count ? output : kAllOutputs,
            reason.empty() ? "the document is in a callback, or was destroyed" : reason};
  }
};

/// A part that was begun. Only a part makes one, so no host makes a part.
class Begun {
 private:
  friend class scrivalen::Part;
  Begun(std::shared_ptr<State> state, Serial serial) : state_(std::move(state)), serial_(serial) {}

  std::shared_ptr<State> state_;
  Serial serial_;
};

/// A text for C, where an empty one is null.
class OptionalText {
 public:
  OptionalText(std::string_view text) : text_(text) {}
  const char* get() const { return text_.empty() ? nullptr : text_.c_str(); }

 private:
  std::string text_;
};

template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};
template <typename T>
struct IsVariant : std::false_type {};
template <typename... T>
struct IsVariant<std::variant<T...>> : std::true_type {};
template <typename T>
struct IsSystemTime : std::false_type {};
template <typename Duration>
struct IsSystemTime<std::chrono::time_point<std::chrono::system_clock, Duration>> : std::true_type {};
template <typename T, typename = void>
struct IsTuple : std::false_type {};
template <typename T>
struct IsTuple<T, std::void_t<decltype(std::tuple_size<T>::value)>> : std::true_type {};
template <typename T, typename = void>
struct HasUtf8Path : std::false_type {};
template <typename T>
struct HasUtf8Path<T, std::void_t<decltype(std::declval<const T&>().u8string())>> : std::true_type {};

template <typename T>
inline constexpr bool isNothing =
    std::is_same_v<T, std::nullopt_t> || std::is_same_v<T, std::nullptr_t> || std::is_same_v<T, std::monostate>;
// A character is no integer.
#if defined(__cpp_char8_t)
template <typename T>
inline constexpr bool isUtf8Character = std::is_same_v<T, char8_t>;
#else
template <typename>
inline constexpr bool isUtf8Character = false;
#endif
template <typename T>
inline constexpr bool isInteger = std::is_integral_v<T> && sizeof(T) <= sizeof(std::int64_t) &&
                                  !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char16_t> &&
                                  !std::is_same_v<T, char32_t> && !isUtf8Character<T>;
template <typename>
inline constexpr bool isNever = false;

// C++20 has types for calendar dates, libstdc++ from its version 11 on.
#if __cplusplus >= 202002L && (!defined(_GLIBCXX_RELEASE) || _GLIBCXX_RELEASE >= 11)
template <typename T>
inline constexpr bool isCalendarDate = std::is_convertible_v<const T&, std::chrono::sys_days>;
using CalendarDay = std::chrono::sys_days;
#else
template <typename T>
inline constexpr bool isCalendarDate = false;
using CalendarDay = std::chrono::time_point<std::chrono::system_clock>;
#endif

inline scrivalen_status putText(scrivalen_document* document, std::string_view text) {
  return scrivalen_cell(document, text.data(), text.size());
}

template <typename Integer>
scrivalen_status putInteger(scrivalen_document* document, Integer value) {
  if constexpr (std::is_unsigned_v<Integer> && sizeof(Integer) == sizeof(std::int64_t)) {
    if (value > static_cast<std::uint64_t>((std::numeric_limits<std::int64_t>::max)())) {
      return putText(document, std::to_string(value));
    }
  }
  return scrivalen_cell_integer(document, static_cast<std::int64_t>(value));
}

template <typename Duration>
scrivalen_status putTime(scrivalen_document* document,
                         std::chrono::time_point<std::chrono::system_clock, Duration> time) {
  if constexpr (std::is_same_v<typename Duration::period, std::ratio<86400>>) {
    return scrivalen_cell_date(document, static_cast<std::int32_t>(time.time_since_epoch().count()));
  } else {
    return scrivalen_cell_time(document, std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count());
  }
}

/// Writes a cell as the type of its value has it.
template <typename Value>
scrivalen_status putCell(scrivalen_document* document, const Value& value) {
  if constexpr (isNothing<Value>) {
    return putText(document, "");
  } else if constexpr (IsOptional<Value>::value) {
    return value ? putCell(document, *value) : putText(document, "");
  } else if constexpr (IsVariant<Value>::value) {
    return std::visit([document](const auto& held) { return putCell(document, held); }, value);
  } else if constexpr (std::is_same_v<Value, bool>) {
    return scrivalen_cell_boolean(document, value ? 1 : 0);
  } else if constexpr (std::is_same_v<Value, char>) {
    return putText(document, std::string_view(&value, 1));
  } else if constexpr (isInteger<Value>) {
    return putInteger(document, value);
  } else if constexpr (std::is_floating_point_v<Value>) {
    return scrivalen_cell_number(document, static_cast<double>(value));
  } else if constexpr (std::is_same_v<Value, Date>) {
    return scrivalen_cell_date(document, value.days);
  } else if constexpr (std::is_same_v<Value, Time>) {
    return scrivalen_cell_time(document, value.seconds);
  } else if constexpr (std::is_same_v<std::decay_t<Value>, const char*> || std::is_same_v<std::decay_t<Value>, char*>) {
    return scrivalen_cell(document, value, SCRIVALEN_NUL);
  } else if constexpr (std::is_convertible_v<const Value&, std::string_view>) {
    return putText(document, value);
  } else if constexpr (IsSystemTime<Value>::value) {
    return putTime(document, value);
  } else if constexpr (isCalendarDate<Value>) {
    return putTime(document, static_cast<CalendarDay>(value));
  } else {
    static_assert(isNever<Value>, "a cell holds text, a number, an integer, a bool, a date, a time, or nothing");
  }
}

/// The bytes of a path: those of a text, or of a std::filesystem::path, which this header need not include for it.
template <typename Path>
std::string pathOf(const Path& path) {
  if constexpr (HasUtf8Path<Path>::value) {
    const auto bytes = path.u8string();
    return std::string(bytes.begin(), bytes.end());
  } else {
    return std::string(std::string_view(path));
  }
}

}  // namespace detail

/// What all parts share. A part that was moved away, has ended, or has another one open in it throws Error when it is
/// used.
class Part {
 public:
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;
  Part& operator=(Part&&) = delete;

  /// Ends the part, and those inside it, before it goes out of scope. Throws what its destructor could not.
  void end() {
    if (state_ && serial_ != detail::kDocument) {
      state_->check(state_->end(serial_));
    }
  }

  /// The document for the C functions. Null after it was destroyed. What is begun by them is ended by them.
  scrivalen_document* handle() const { return state_ ? state_->handle : nullptr; }

 protected:
  Part() = default;
  explicit Part(detail::Begun begun) : state_(std::move(begun.state_)), serial_(begun.serial_) {}
  /// The whole document.
  explicit Part(std::shared_ptr<detail::State> state) : state_(std::move(state)) {}
  Part(Part&& other) noexcept : state_(std::move(other.state_)), serial_(other.serial_) {}
  ~Part() {
    if (state_ && serial_ != detail::kDocument) {
      state_->end(serial_);
    }
  }

  detail::State& state() const {
    if (!state_) {
      throw Error(Status::Misuse, kAllOutputs, "the part was moved away");
    }
    return *state_;
  }

  /// Runs a call of C on this part.
  template <typename Call>
  void call(Call function) const {
    detail::State& used = state();
    used.readyFor(serial_);
    used.check(function(used.handle));
  }

  /// Begins a part in this one by a call of C.
  template <typename Inner, typename Call>
  Inner begin(const Call& function) const {
    const auto run = [](scrivalen_document* document, const void* arguments) {
      return (*static_cast<const Call*>(arguments))(document);
    };
    const detail::Serial serial = state().begun(serial_, run, &function);
    return Inner(detail::Begun(state_, serial));
  }

 private:
  std::shared_ptr<detail::State> state_;
  detail::Serial serial_ = detail::kDocument;
};

class Span;
class Paragraph;
class Heading;
class Quote;
class List;
class Code;
class Table;
class Contents;

/// What may be both in text and among blocks, where a picture is a paragraph.
class Content : public virtual Part {
 public:
  /// Names a place that links can lead to.
  void anchor(std::string_view id) const;
  /// Places a picture.
  /// @param bytes  of a PNG or JPEG
  /// @param width  in points, 0 to 14,400; 0: the picture's own, at most that of the text
  void image(std::string_view bytes, std::string_view alternative, double width = 0) const;
  /// @param path  UTF-8, or a std::filesystem::path
  template <typename Path>
  void imageFile(const Path& path, std::string_view alternative, double width = 0) const;
  /// Writes markup for one format, unchanged: "html", "xml", "rtf" or "markdown".
  void raw(std::string_view format, std::string_view markup) const;

 protected:
  Content() = default;
  ~Content() = default;
  Content(Content&&) = default;
};

/// Where there may be text: paragraphs, headings, items, cells, and spans of these.
class Inlines : public virtual Content {
 public:
  /// Writes text, which may come in pieces, divided between any two of its characters.
  void text(std::string_view text) const;
  /// Begins a new line.
  void lineBreak() const;

  [[nodiscard]] Span beginSpan(Style style) const;
  /// @param color, background  a CSS name or #RRGGBB each; empty: unchanged
  [[nodiscard]] Span beginColored(std::string_view color, std::string_view background = {}) const;
  /// @param points  more than 0, at most 1,000
  [[nodiscard]] Span beginSized(double points) const;
  /// @param address  "#id" leads to a place in the document
  [[nodiscard]] Span beginLink(std::string_view address, std::string_view title = {}) const;
  /// @param tag  BCP 47
  [[nodiscard]] Span beginLanguage(std::string_view tag) const;

  /// Writes a whole span.
  void span(Style style, std::string_view text) const;
  /// Writes a whole link.
  void link(std::string_view address, std::string_view text, std::string_view title = {}) const;

 protected:
  Inlines() = default;
  ~Inlines() = default;
  Inlines(Inlines&&) = default;
};

/// Where there may be blocks: the document, sections, quotes and items.
class Blocks : public virtual Content {
 public:
  /// Writes a whole heading. @param level  1 to 6
  void heading(int level, std::string_view text) const;
  /// @param id  empty: made from the heading's text
  [[nodiscard]] Heading beginHeading(int level, std::string_view id = {}, Align align = Align::Auto) const;
  /// Writes a whole paragraph.
  void paragraph(std::string_view text) const;
  [[nodiscard]] Paragraph beginParagraph(Align align = Align::Auto) const;
  [[nodiscard]] Quote beginQuote() const;
  /// @param tight  no space between its items
  [[nodiscard]] List beginList(bool tight = true) const;
  /// @param first  the first number, not negative
  [[nodiscard]] List beginOrderedList(int first = 1, bool tight = true) const;
  /// Writes whole code, in which spaces, tabs and line breaks stay.
  void code(std::string_view text, std::string_view language = {}) const;
  [[nodiscard]] Code beginCode(std::string_view language = {}) const;
  /// @param columns  empty: as many as the widest row of the sample has
  /// @param name     its element in XML
  [[nodiscard]] Table beginTable(const std::vector<Column>& columns = {}, std::string_view name = {}) const;
  /// Begins a list of contents, where the host knows it.
  [[nodiscard]] Contents beginContents() const;
  /// Writes a horizontal line.
  void rule() const;
  void pageBreak() const;

 protected:
  Blocks() = default;
  ~Blocks() = default;
  Blocks(Blocks&&) = default;
};

/// Emphasis, a colour, a size, a link or another language.
class Span final : public Inlines {
 public:
  explicit Span(detail::Begun begun) : Part(std::move(begun)) {}
};

class Paragraph final : public Inlines {
 public:
  explicit Paragraph(detail::Begun begun) : Part(std::move(begun)) {}
};

class Heading final : public Inlines {
 public:
  explicit Heading(detail::Begun begun) : Part(std::move(begun)) {}
};

/// A sheet, topic or page.
class Section final : public Blocks {
 public:
  explicit Section(detail::Begun begun) : Part(std::move(begun)) {}
};

class Quote final : public Blocks {
 public:
  explicit Quote(detail::Begun begun) : Part(std::move(begun)) {}
};

/// An item of a list: text, then perhaps blocks.
class Item final : public Inlines, public Blocks {
 public:
  explicit Item(detail::Begun begun) : Part(std::move(begun)) {}
};

class List final : public Part {
 public:
  explicit List(detail::Begun begun) : Part(std::move(begun)) {}

  /// Writes a whole item.
  void item(std::string_view text, Task task = Task::None) const;
  [[nodiscard]] Item beginItem(Task task = Task::None) const;
};

class Code final : public Part {
 public:
  explicit Code(detail::Begun begun) : Part(std::move(begun)) {}

  /// Writes text, which may come in pieces, divided between any two of its characters.
  void text(std::string_view text) const;
};

class Contents final : public Part {
 public:
  explicit Contents(detail::Begun begun) : Part(std::move(begun)) {}

  /// @param level  1 to 6
  /// @param id     the place that the line leads to
  void item(int level, std::string_view id, std::string_view text) const;
};

/// A cell with text and spans, or with one value.
class Cell final : public Inlines {
 public:
  explicit Cell(detail::Begun begun) : Part(std::move(begun)) {}

  /// Gives the cell its value instead of text; see Row::cell.
  template <typename Value>
  void value(const Value& value) const;
};

class Row final : public Part {
 public:
  explicit Row(detail::Begun begun) : Part(std::move(begun)) {}

  /// Writes a cell as the type of its value has it: texts (anything that is a std::string_view, and char), integers,
  /// floating-point numbers, bool, Date, Time. A system_clock time_point is a time, or a date if it counts days; its
  /// fractions of a second are cut. C++20's calendar dates are dates. std::nullopt, nullptr, std::monostate, a null
  /// `const char*` and an empty optional are an empty cell; an optional and a variant are what they hold. An integer of
  /// more than 63 bits is a text.
  template <typename Value>
  void cell(const Value& value) const;
  template <typename Value>
  void cell(const Value& value, const CellStyle& style) const;
  [[nodiscard]] Cell beginCell() const;
  [[nodiscard]] Cell beginCell(const CellStyle& style) const;
};

class Table final : public Part {
 public:
  explicit Table(detail::Begun begun) : Part(std::move(begun)) {}

  /// Writes a whole row, `row("Tea", 4.5, std::nullopt, Date(2026, 1, 31))`; a single tuple, pair or std::array is its
  /// elements. For the types see Row::cell.
  template <typename... Values>
  void row(const Values&... values) const;
  /// Writes a whole header row. The first ones are repeated on each page.
  template <typename... Values>
  void header(const Values&... values) const;
  [[nodiscard]] Row beginRow() const;
  [[nodiscard]] Row beginHeader() const;

  /// Writes many rows, column by column: `rows({names, ColumnData(prices).validity(bits)})`. Throws Error when columns
  /// have different numbers of rows.
  void rows(std::initializer_list<ColumnData> columns) const { rowsOf(columns.begin(), columns.size()); }
  void rows(const std::vector<ColumnData>& columns) const { rowsOf(columns.data(), columns.size()); }
  /// Writes rows from a record batch of Arrow. The array is taken over and released, whatever happens; the schema is
  /// only read.
  void rows(const ArrowSchema* schema, ArrowArray* array) const;
  /// Writes the rows of all batches of an Arrow stream, which is taken over and released, whatever happens.
  void rows(ArrowArrayStream* stream) const;

 private:
  Row begun(bool header) const;
  template <typename... Values>
  void writeRow(bool header, const Values&... values) const;
  void rowsOf(const ColumnData* columns, std::size_t count) const;
};

/// A document that is written once, into all of its outputs. Outputs, settings and progress come before the first
/// content.
///
/// A callback must not destroy its document.
class Document final : public Blocks {
 public:
  /// Throws std::bad_alloc when memory runs out.
  Document() : Part(std::make_shared<detail::State>()) {}
  /// A document with these files, whose extensions name their formats.
  explicit Document(std::initializer_list<std::string_view> paths) : Document() {
    for (const std::string_view path : paths) {
      addFile(path);
    }
  }
  Document(Document&&) noexcept = default;
  /// Abandons the document unless it was closed.
  ~Document() {
    if (handle()) {
      state().free();
    }
  }

  /// Adds a file as an output. It replaces its target when the document is closed well.
  /// @param path    UTF-8, or a std::filesystem::path
  /// @param format  empty: by the extension
  /// @return the number of the output
  template <typename Path>
  std::size_t addFile(const Path& path, std::string_view format = {});
  /// Adds a function as an output, which is used until the document is closed or destroyed.
  std::size_t addStream(std::string_view format, WriteFunction write);
  /// Adds a stream, which must live until the document is closed or destroyed.
  std::size_t addStream(std::string_view format, std::ostream& stream);
  /// Sets a setting for all formats, or for one alone, as in "text.encoding".
  void set(std::string_view name, std::string_view value);
  /// Sets a function that is called at least every 64 KiB of output; an empty one is none.
  void setProgress(ProgressFunction progress);
  /// Creates every output now; the first content does it otherwise. Throws the first failure, and the document is open
  /// all the same if an output lives.
  void open();

  /// Begins a new sheet, topic or page.
  [[nodiscard]] Section beginSection(std::string_view name = {}, std::string_view id = {}) const;

  /// Ends what is open, finishes the document and delivers the outputs that did not fail. Throws the first failure, but
  /// not before all of that is done.
  void close();
  /// The same for hosts that prefer statuses. What a callback raised is dropped.
  Status tryClose() noexcept;

  /// The first failure so far.
  Status result() const noexcept { return static_cast<Status>(scrivalen_result(handle())); }
  /// The reason of the last call that failed; if none did, that of the result.
  std::string error() const { return scrivalen_error(handle()); }
  std::size_t outputCount() const noexcept { return scrivalen_output_count(handle()); }
  Status outputResult(std::size_t output) const noexcept {
    return static_cast<Status>(scrivalen_output_result(handle(), output));
  }
  /// Why an output failed; empty if it did not.
  std::string outputError(std::size_t output) const { return scrivalen_output_error(handle(), output); }
  /// What could not be written as given; empty until the document is closed. Valid until the next call, and as long as
  /// the document.
  const std::vector<Warning>& warnings();

 private:
  template <typename Call>
  void prepare(Call function);
};

/// The version of the library, such as "1.1.0".
inline std::string_view version() { return scrivalen_version(); }

/// The names of the formats that the library writes.
inline std::vector<std::string_view> formats() {
  std::vector<std::string_view> names;
  while (const char* const name = scrivalen_format(names.size())) {
    names.emplace_back(name);
  }
  return names;
}

inline void Inlines::text(std::string_view text) const {
  call([&](scrivalen_document* to) { return scrivalen_text(to, text.data(), text.size()); });
}

inline void Inlines::lineBreak() const { call(&scrivalen_line_break); }

inline void Content::anchor(std::string_view id) const {
  call([&](scrivalen_document* to) { return scrivalen_anchor(to, std::string(id).c_str()); });
}

inline Span Inlines::beginSpan(Style style) const {
  return begin<Span>([&](scrivalen_document* in) { return scrivalen_begin_span(in, static_cast<int>(style)); });
}

inline Span Inlines::beginColored(std::string_view color, std::string_view background) const {
  return begin<Span>([&](scrivalen_document* in) {
    return scrivalen_begin_colored(in, detail::OptionalText(color).get(), detail::OptionalText(background).get());
  });
}

inline Span Inlines::beginSized(double points) const {
  return begin<Span>([&](scrivalen_document* in) { return scrivalen_begin_sized(in, points); });
}

inline Span Inlines::beginLink(std::string_view address, std::string_view title) const {
  return begin<Span>([&](scrivalen_document* in) {
    return scrivalen_begin_link(in, std::string(address).c_str(), detail::OptionalText(title).get());
  });
}

inline Span Inlines::beginLanguage(std::string_view tag) const {
  return begin<Span>([&](scrivalen_document* in) { return scrivalen_begin_language(in, std::string(tag).c_str()); });
}

inline void Inlines::span(Style style, std::string_view text) const {
  Span span = beginSpan(style);
  span.text(text);
  span.end();
}

inline void Inlines::link(std::string_view address, std::string_view text, std::string_view title) const {
  Span link = beginLink(address, title);
  link.text(text);
  link.end();
}

inline void Content::image(std::string_view bytes, std::string_view alternative, double width) const {
  call([&](scrivalen_document* to) {
    return scrivalen_image(to, bytes.data(), bytes.size(), std::string(alternative).c_str(), width);
  });
}

template <typename Path>
void Content::imageFile(const Path& path, std::string_view alternative, double width) const {
  call([&](scrivalen_document* to) {
    return scrivalen_image_file(to, detail::pathOf(path).c_str(), std::string(alternative).c_str(), width);
  });
}

inline void Content::raw(std::string_view format, std::string_view markup) const {
  call([&](scrivalen_document* to) {
    return scrivalen_raw(to, std::string(format).c_str(), markup.data(), markup.size());
  });
}

inline void Blocks::heading(int level, std::string_view text) const {
  call([&](scrivalen_document* to) { return scrivalen_heading(to, level, text.data(), text.size()); });
}

inline Heading Blocks::beginHeading(int level, std::string_view id, Align align) const {
  const scrivalen_paragraph_style style{sizeof style, static_cast<int>(align)};
  return begin<Heading>([&](scrivalen_document* in) {
    return scrivalen_begin_heading(in, level, detail::OptionalText(id).get(), &style);
  });
}

inline void Blocks::paragraph(std::string_view text) const {
  call([&](scrivalen_document* to) { return scrivalen_paragraph(to, text.data(), text.size()); });
}

inline Paragraph Blocks::beginParagraph(Align align) const {
  const scrivalen_paragraph_style style{sizeof style, static_cast<int>(align)};
  return begin<Paragraph>([&](scrivalen_document* in) { return scrivalen_begin_paragraph(in, &style); });
}

inline Quote Blocks::beginQuote() const { return begin<Quote>(&scrivalen_begin_quote); }

inline List Blocks::beginList(bool tight) const {
  return begin<List>([&](scrivalen_document* in) { return scrivalen_begin_list(in, 0, 0, tight ? 1 : 0); });
}

inline List Blocks::beginOrderedList(int first, bool tight) const {
  return begin<List>([&](scrivalen_document* in) { return scrivalen_begin_list(in, 1, first, tight ? 1 : 0); });
}

inline void Blocks::code(std::string_view text, std::string_view language) const {
  Code code = beginCode(language);
  code.text(text);
  code.end();
}

inline Code Blocks::beginCode(std::string_view language) const {
  return begin<Code>(
      [&](scrivalen_document* in) { return scrivalen_begin_code(in, detail::OptionalText(language).get()); });
}

inline Table Blocks::beginTable(const std::vector<Column>& columns, std::string_view name) const {
  std::vector<scrivalen_column> given;
  given.reserve(columns.size());
  for (const Column& column : columns) {
    given.push_back(column.toC());
  }
  return begin<Table>([&](scrivalen_document* in) {
    return scrivalen_begin_table(in, given.empty() ? nullptr : given.data(), given.size(),
                                 detail::OptionalText(name).get());
  });
}

inline Contents Blocks::beginContents() const { return begin<Contents>(&scrivalen_begin_contents); }

inline void Blocks::rule() const { call(&scrivalen_rule); }

inline void Blocks::pageBreak() const { call(&scrivalen_page_break); }

inline void List::item(std::string_view text, Task task) const {
  Item item = beginItem(task);
  item.text(text);
  item.end();
}

inline Item List::beginItem(Task task) const {
  return begin<Item>([&](scrivalen_document* in) { return scrivalen_begin_item(in, static_cast<int>(task)); });
}

inline void Code::text(std::string_view text) const {
  call([&](scrivalen_document* to) { return scrivalen_text(to, text.data(), text.size()); });
}

inline void Contents::item(int level, std::string_view id, std::string_view text) const {
  call([&](scrivalen_document* to) {
    return scrivalen_contents_item(to, level, std::string(id).c_str(), text.data(), text.size());
  });
}

template <typename Value>
void Cell::value(const Value& value) const {
  call([&](scrivalen_document* to) { return detail::putCell(to, value); });
}

template <typename Value>
void Row::cell(const Value& value) const {
  call([&](scrivalen_document* to) { return detail::putCell(to, value); });
}

template <typename Value>
void Row::cell(const Value& value, const CellStyle& style) const {
  Cell cell = beginCell(style);
  cell.value(value);
  cell.end();
}

inline Cell Row::beginCell() const {
  return begin<Cell>([](scrivalen_document* in) { return scrivalen_begin_cell(in, nullptr); });
}

inline Cell Row::beginCell(const CellStyle& style) const {
  const scrivalen_cell_style given = style.toC();
  return begin<Cell>([&](scrivalen_document* in) { return scrivalen_begin_cell(in, &given); });
}

inline Row Table::begun(bool header) const {
  return begin<Row>([&](scrivalen_document* in) { return scrivalen_begin_row(in, header ? 1 : 0); });
}

inline Row Table::beginRow() const { return begun(false); }

inline Row Table::beginHeader() const { return begun(true); }

template <typename... Values>
void Table::writeRow(bool header, const Values&... values) const {
  Row row = begun(header);
  (row.cell(values), ...);
  row.end();
}

template <typename... Values>
void Table::row(const Values&... values) const {
  if constexpr ((sizeof...(Values) == 1) && (detail::IsTuple<Values>::value && ...)) {
    (std::apply([this](const auto&... elements) { writeRow(false, elements...); }, values), ...);
  } else {
    writeRow(false, values...);
  }
}

template <typename... Values>
void Table::header(const Values&... values) const {
  if constexpr ((sizeof...(Values) == 1) && (detail::IsTuple<Values>::value && ...)) {
    (std::apply([this](const auto&... elements) { writeRow(true, elements...); }, values), ...);
  } else {
    writeRow(true, values...);
  }
}

inline void Table::rowsOf(const ColumnData* columns, std::size_t count) const {
  std::vector<scrivalen_column_data> given;
  given.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (columns[i].rows() != columns[0].rows()) {
      throw Error(Status::Misuse, kAllOutputs,
                  "column " + std::to_string(i) + " has " + std::to_string(columns[i].rows()) + " rows, not " +
                      std::to_string(columns[0].rows()));
    }
    given.push_back(columns[i].toC());
  }
  const std::size_t rows = count == 0 ? 0 : columns[0].rows();
  call([&](scrivalen_document* to) { return scrivalen_rows(to, given.data(), count, rows); });
}

inline void Table::rows(const ArrowSchema* schema, ArrowArray* array) const {
  call([&](scrivalen_document* to) { return scrivalen_rows_arrow(to, schema, array); });
}

inline void Table::rows(ArrowArrayStream* stream) const {
  call([&](scrivalen_document* to) { return scrivalen_rows_arrow_stream(to, stream); });
}

template <typename Call>
void Document::prepare(Call function) {
  detail::State& used = state();
  used.check(function(used.handle));
}

template <typename Path>
std::size_t Document::addFile(const Path& path, std::string_view format) {
  prepare([&](scrivalen_document* to) {
    return scrivalen_add_file(to, detail::pathOf(path).c_str(), std::string(format).c_str());
  });
  return outputCount() - 1;
}

inline std::size_t Document::addStream(std::string_view format, WriteFunction write) {
  if (!write) {
    throw Error(Status::Misuse, kAllOutputs, "the function of a stream is empty");
  }
  detail::State& used = state();
  used.streams.push_back(std::make_unique<detail::State::Stream>(detail::State::Stream{used, std::move(write)}));
  const auto take = [](void* user, const void* data, std::size_t size) {
    const auto& stream = *static_cast<const detail::State::Stream*>(user);
    return stream.state.guarded(EIO, [&] {
      stream.write(std::string_view(static_cast<const char*>(data), size));
      return 0;
    });
  };
  prepare([&](scrivalen_document* to) {
    return scrivalen_add_stream(to, std::string(format).c_str(), take, used.streams.back().get());
  });
  return outputCount() - 1;
}

inline std::size_t Document::addStream(std::string_view format, std::ostream& stream) {
  return addStream(format, [&stream](std::string_view bytes) {
    if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
      throw std::ios_base::failure("the stream of an output cannot be written");
    }
  });
}

inline void Document::set(std::string_view name, std::string_view value) {
  prepare(
      [&](scrivalen_document* to) { return scrivalen_set(to, std::string(name).c_str(), std::string(value).c_str()); });
}

inline void Document::setProgress(ProgressFunction progress) {
  detail::State& used = state();
  const auto ask = [](void* user, std::uint64_t rows, std::uint64_t bytes) {
    auto& called = *static_cast<detail::State*>(user);
    return called.guarded(1, [&] { return called.progress(rows, bytes) ? 0 : 1; });
  };
  prepare([&](scrivalen_document* to) {
    return progress ? scrivalen_set_progress(to, ask, &used) : scrivalen_set_progress(to, nullptr, nullptr);
  });
  used.progress = std::move(progress);
}

inline void Document::open() {
  prepare([this](scrivalen_document* opening) {
    const scrivalen_status status = scrivalen_open(opening);
    state().isOpened = outputCount() > 0;
    return status;
  });
}

inline Section Document::beginSection(std::string_view name, std::string_view id) const {
  return begin<Section>([&](scrivalen_document* in) {
    return scrivalen_begin_section(in, detail::OptionalText(name).get(), detail::OptionalText(id).get());
  });
}

inline void Document::close() {
  detail::State& used = state();
  const scrivalen_status status = scrivalen_close(used.handle);
  used.open.clear();
  used.check(status);
}

inline Status Document::tryClose() noexcept {
  const scrivalen_status status = scrivalen_close(handle());
  if (handle()) {
    state().open.clear();
    state().raised = nullptr;
  }
  return static_cast<Status>(status);
}

inline const std::vector<Warning>& Document::warnings() {
  detail::State& used = state();
  scrivalen_warning warning{};
  warning.size = sizeof warning;
  while (scrivalen_next_warning(used.handle, &warning)) {
    used.warnings.push_back({warning.output, warning.code, warning.count, warning.message});
  }
  return used.warnings;
}

}  // namespace cpp
}  // namespace scrivalen
