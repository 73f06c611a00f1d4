#include "formats/help/chm_report.h"

#include "formats/markup/page_loss.h"
#include "output/clog.h"
#include "output/exception_barrier.h"
#include "output/host_handlers.h"
#include "output/log_loss.h"
#include "output/target_file.h"
#include "report/report_error.h"
#include "report/template_path.h"
#include "system/files/file_rights.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "system/process/process.h"
#include "text/ascii.h"
#include "text/fmt.h"
#include "text/null_text.h"
#include "text/utf.h"

#include <algorithm>
#include <memory>
#include <optional>

using namespace scrivalen;

namespace {

constexpr const wchar_t* kTemplate = L"default.htm";
constexpr const wchar_t* kTitle = L"%TITLE%";
constexpr const wchar_t* kProjectName = L"report.hhp";
constexpr const wchar_t* kContentsName = L"report.hhc";
constexpr const wchar_t* kCompiledName = L"report.chm";

bool isTemplateThere() {
  const auto path = scrivalen::templatePath(homePath(), kTemplate);
  return path && pathExists(*path);
}

// Escapes the percent signs of a text, so that a template replaces nothing in it: its names are between percent signs.
std::wstring forTemplate(std::wstring_view quoted) {
  std::wstring text;
  for (const wchar_t c : quoted) {
    if (c == L'%') {
      text += L"&#37;";
    } else {
      text += c;
    }
  }
  return text;
}

std::wstring oneLine(std::wstring text) {
  std::replace_if(
      text.begin(), text.end(), [](wchar_t c) { return c == L'\r' || c == L'\n'; }, L' ');
  return text;
}

// The project has one line per topic, and the compiler's own files have fixed names.
std::optional<std::wstring> refusalReason(const std::wstring& path) {
  if (oneLine(path) != path) {
    return FMT::Format(L"'%s' cannot be a topic: there is a line break in its path.", oneLine(path));
  }
  for (const wchar_t* own : {kProjectName, kContentsName, kCompiledName}) {
    if (equalIgnoringCase(fileNameOf(path), own)) {
      return FMT::Format(L"'%s' cannot be a topic: the help compiler needs a file of this name itself.", path);
    }
  }
  return std::nullopt;
}

std::wstring exitText(const ProcessResult& run) {
  return run.signal != 0 ? FMT::Format(L"It was ended by signal %d.", run.signal)
                         : FMT::Format(L"It ended with status %d.", run.exitStatus);
}

}  // namespace

// The compiler's output file. An earlier file of that name is renamed, so that it is never mistaken for this report's,
// and gets its name back unless it is discarded.
class CHMReport::Compiled {
 public:
  Compiled() = default;
  Compiled(const Compiled&) = delete;
  Compiled& operator=(const Compiled&) = delete;
  ~Compiled() { restoreEarlier(); }

  // A folder is left alone: some systems would rename that too.
  void setName(const std::wstring& path) {
    path_ = path;
    if (pathExists(path) && !isFolder(path)) {
      earlier_ = createFileBeside(path);
    }
    if (earlier_ && !moveReplacing(path, *earlier_)) {
      deleteFile(*earlier_);
      earlier_.reset();
    }
    isBlocked_ = pathExists(path);
  }

  const std::wstring& path() const { return path_; }
  // Whether something of that name could not be moved away.
  bool isBlocked() const { return isBlocked_; }
  bool isMade() const { return !isBlocked_ && pathExists(path_); }
  const std::optional<std::wstring>& earlier() const { return earlier_; }

  void discardEarlier() {
    if (earlier_) {
      deleteFile(*earlier_);
      earlier_.reset();
    }
  }

  // Returns false when the earlier file keeps its new name.
  bool restoreEarlier() noexcept {
    const bool isRestored = !earlier_ || contained(false, [&] { return moveReplacing(*earlier_, path_); });
    if (isRestored) {
      earlier_.reset();
    }
    return isRestored;
  }

 private:
  std::wstring path_;
  std::optional<std::wstring> earlier_;  // its new name
  bool isBlocked_ = false;
};

void CHMReport::Page::setTitle(const wchar_t* title) {
  properties_.clear();
  if (title) {
    AddProperty(kTitle, title);
  }
}

REPORT_ERRORS CHMReport::Page::Open(const wchar_t* file) {
  const REPORT_ERRORS result = HtmlReport::Open(file);
  isCreated_ = result == REPORT_OK;
  return result;
}

void CHMReport::Page::forgetLoss() { ReportError(error_, lost_).forgetLoss(); }

REPORT_ERRORS CHMReport::Open(const wchar_t* file) {
  ReportError error(error_, lost_);
  return error.resultOf([&] {
    if (openFlag_ != 0) {
      error.set(FileError::Open, orEmpty(file), kStillOpen);
      return REPORT_FILE_ERROR;
    }
    if (error.reportLoss()) {
      return REPORT_FILE_ERROR;
    }
    page_.forgetLoss();
    const wchar_t* const title = GetProperty(kTitle);
    target_ = orEmpty(file);
    defaultTopic_.clear();
    topicPaths_.clear();
    folder_.clear();
    failure_.clear();
    project_.reset();
    openConforming_ = conforming_;
    project_.title = oneLine(title ? title : L"Report");
    firstTopicPending_ = true;
    openFlag_ = 1;
    return REPORT_OK;
  });
}

REPORT_ERRORS CHMReport::BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) {
  REPORT_ERRORS result = REPORT_FILE_ERROR;
  ReportError(error_, lost_).keepContent([&] { result = beginTopic(folder, file, title); });
  return result;
}

REPORT_ERRORS CHMReport::beginTopic(const wchar_t* folder, const wchar_t* file, const wchar_t* title) {
  if (openFlag_ == 0) {
    error_ = L"The report is not open.";
    return REPORT_FILE_ERROR;
  }
  const std::wstring path = orEmpty(folder) + std::wstring(orEmpty(file));
  if (const auto reason = refusalReason(path)) {
    error_ = *reason;
    reportFailure(error_);
    return REPORT_FILE_ERROR;
  }
  folder_ = orEmpty(folder);
  addTopic(path, title);
  preparePage(path, title);
  const REPORT_ERRORS result = openPage(path);
  if (result != REPORT_OK) {
    error_ = page_.GetError();
    reportFailure(error_);
  }
  return result;
}

void CHMReport::addTopic(const std::wstring& path, const wchar_t* title) {
  if (firstTopicPending_) {
    defaultTopic_ = path;
    firstTopicPending_ = false;
  }
  disownPage(path);
  project_.files.push_back(path);
  project_.addTopic(orEmpty(title), path);
}

// Until the page is open, a file at its path belongs to somebody else, unless an earlier topic created it.
void CHMReport::disownPage(const std::wstring& path) {
  if (topicPaths_.find(path) == topicPaths_.end()) {
    project_.foreignFiles.push_back(path);
    topicPaths_.insert(path);
  }
}

// A device is never deleted.
void CHMReport::claimPage(const std::wstring& path) {
  std::erase(project_.foreignFiles, path);
  if (isSpecialFile(path)) {
    project_.foreignFiles.push_back(path);
  }
}

// A page that was created belongs to this report even if it could not be begun.
REPORT_ERRORS CHMReport::openPage(const std::wstring& path) {
  std::wstring opened = path;
  const REPORT_ERRORS result = page_.Open();
  if (result == REPORT_OK) {
    openTopic_.swap(opened);
  }
  if (page_.takeIsCreated()) {
    claimPage(path);
  }
  return result;
}

// A template inserts the title unescaped; the plain head escapes it.
void CHMReport::preparePage(const std::wstring& path, const wchar_t* title) {
  page_.SetTemplateFileName(kTemplate);
  page_.SetOutputFileName(path.c_str());
  page_.SetReportOption(OPTION_CONFORMING, openConforming_);
  if (!openConforming_) {
    page_.setTitle(nullptr);
    return;
  }
  const std::wstring text = orEmpty(title);
  page_.setTitle((isTemplateThere() ? forTemplate(Quoting(text)) : text).c_str());
}

void CHMReport::EndSubDocument() {
  if (closePage() != REPORT_OK) {
    ReportError(error_, lost_).keepContent([&] { keepFailure(page_.GetError()); });
  }
}

// A page no longer exists when the help file does, so its losses are logged under the help file's name.
REPORT_ERRORS CHMReport::closePage() {
  openTopic_.clear();
  project_.loss.add(scrivalen::formats::PageLoss::takeFrom(page_));
  return page_.Close();
}

void CHMReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) {
  page_.Text(text, type, style, openConforming_ ? raw : 0);
}

void CHMReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_CONFORMING) {
    conforming_ = value != 0;
  }
}

// The pages are deleted in any case. The page of a topic that was not ended is closed first, after the compiler has
// run: some systems cannot delete an open file.
REPORT_ERRORS CHMReport::Close() {
  if (openFlag_ == 0) {
    return REPORT_OK;
  }
  openFlag_ = 0;
  ReportError error(error_, lost_);
  Compiled compiled;
  const bool isRun = error.keepContent([&] {
    if (error.reportLoss()) {
      keepFailure(kOutOfMemory);
    }
    if (!openTopic_.empty()) {
      reportFailure(FMT::Format(L"The topic '%s' was not ended.", openTopic_));
    }
    hadTarget_ = pathExists(target_);
    compile(compiled);
  });
  closePage();
  project_.deleteWorkingFiles();
  return error.resultOf([&] {
    if (isRun) {
      finish(compiled);
    }
    logLoss(target_, project_.loss);
    const bool hasLoss = error.reportLoss();
    if (!failure_.empty()) {
      error.set(failure_);
    }
    return hasLoss || !failure_.empty() ? REPORT_FILE_ERROR : REPORT_OK;
  });
}

void CHMReport::compile(Compiled& compiled) {
  compiled.setName(folder_ + kCompiledName);
  if (compiled.isBlocked()) {
    reportFailure(FMT::Format(L"'%s' is in the way of the help compiler and cannot be moved.", compiled.path()));
  }
  project_.writeProject(folder_ + kProjectName, defaultTopic_);
  project_.writeContents(folder_ + kContentsName);
  project_.runCompiler(folder_ + kProjectName);
}

void CHMReport::finish(Compiled& compiled) {
  const bool isMade = compiled.isMade() && project_.failure.empty();
  if (!project_.failure.empty()) {
    reportProjectFailure();
  } else if (!isMade && !compiled.isBlocked()) {
    reportNoHelpFile(compiled.path());
  }
  for (const std::wstring& message : project_.run.messages) {
    CLog::Bug2(FMT::Format(L"'%s': %s", target_, message));
  }
  if (isMade && shouldDeliver()) {
    deliver(compiled);
  } else if (isMade) {
    deleteFile(compiled.path());
    CLog::Bug2(FMT::Format(L"'%s' is left as it was, because the new help file is incomplete.", target_));
  }
  if (!compiled.restoreEarlier()) {
    const std::wstring reason = systemErrorText(lastSystemError());
    reportFailure(
        FMT::Format(L"The earlier '%s' is called '%s' now. %s", compiled.path(), *compiled.earlier(), reason));
  }
}

void CHMReport::reportProjectFailure() {
  if (project_.isFailureLogged) {
    keepFailure(project_.failure);
  } else {
    reportFailure(project_.failure);
  }
}

// The compiler's last message says why it gave up.
void CHMReport::reportNoHelpFile(const std::wstring& path) {
  std::wstring reason = FMT::Format(L"The help compiler left no '%s'. %s", path, exitText(project_.run));
  if (std::vector<std::wstring>& messages = project_.run.messages; !messages.empty()) {
    reason += L' ' + messages.back();
    messages.pop_back();
  }
  reportFailure(reason);
}

// An incomplete help file is better than none, but not better than an existing one.
bool CHMReport::shouldDeliver() const { return failure_.empty() || !hadTarget_; }

void CHMReport::deliver(Compiled& compiled) {
  if (isSameFile(compiled.path(), target_)) {
    deliverInPlace(compiled);
  } else {
    moveToTarget(compiled.path());
    compiled.discardEarlier();
  }
}

// The compiler's output is already at the target, and the earlier file has another name. Without that file's rights the
// output might admit more readers than it, so the earlier file is restored.
void CHMReport::deliverInPlace(Compiled& compiled) {
  const auto& earlier = compiled.earlier();
  if (!earlier || copyRights(*earlier, compiled.path())) {
    compiled.discardEarlier();
    return;
  }
  const std::wstring reason = systemErrorText(lastSystemError());
  reportFailure(
      FMT::Format(L"The new help file cannot have the rights of the earlier '%s', which is kept. %s", target_, reason));
}

void CHMReport::moveToTarget(const std::wstring& path) {
  TargetFile target;
  if (!target.prepare(target_) || !target.replaceBy(path)) {
    const std::wstring reason = systemErrorText(lastSystemError());
    reportFailure(FMT::Format(L"The help file '%s' could not be moved to '%s'. %s", path, target_, reason));
    if (isSpecialFile(target_)) {
      deleteFile(path);
    }
  }
}

void CHMReport::keepFailure(const std::wstring& reason) {
  if (failure_.empty()) {
    failure_ = reason;
  }
}

void CHMReport::reportFailure(const std::wstring& reason) {
  CLog::Bug2(reason);
  keepFailure(reason);
}
