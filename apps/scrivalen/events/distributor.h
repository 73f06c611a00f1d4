#pragma once

#include "events/document.h"
#include "events/event_log.h"
#include "output.h"

#include <functional>
#include <memory>
#include <vector>

namespace scrivalen::command {

using Outputs = std::vector<std::unique_ptr<Output>>;

/// Passes a document to every output. The outputs are opened as soon as the title is known; earlier events are held
/// back. If a table of contents is wanted, the whole document is held back.
class Distributor : public EventSink {
 public:
  struct Plan {
    DocumentSettings settings;
    bool titleFromHeading = false;  ///< the first heading replaces the title of the settings
    bool contents = false;
    std::function<void()> poll;                        ///< called every few events; an exception it raises ends the run
    std::function<void(std::size_t blocks)> progress;  ///< called every few hundred blocks
  };

  /// @param outputs  not owned; must outlive the distributor
  Distributor(const Outputs& outputs, Plan plan);

  /// Raises NoOutputLeft within a few events after the last output has failed.
  void write(const Event& event) override;
  /// Opens the outputs if that has not happened yet. Called at the end of the document.
  void finish();

 private:
  void holdBack(const Event& event);
  void poll();
  void addToContents(const Event& heading);
  void start();
  void replayHeld();
  void forward(const Event& event);

  const Outputs& outputs_;
  Plan plan_;
  EventLog held_;
  EventLog contents_;
  bool isFirst_ = true;
  bool started_ = false;
  std::size_t events_ = 0;
  std::size_t blocks_ = 0;
};

}  // namespace scrivalen::command
