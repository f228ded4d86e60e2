#include "gui/job_progress.h"

#include <algorithm>

#include "ui/form.h"

namespace tolvane::gui {

JobProgressBar::JobProgressBar(QWidget* parent) : QProgressBar(parent) {
  setRange(0, 0);
  setMaximumWidth(160);
  setVisible(false);
}

void JobProgressBar::follow(const ui::Form& form) {
  const bool busy = form.busy();
  const std::uint64_t total = form.progressTotal();
  setVisible(busy);
  if (busy && total > kMeasuredFrom) {
    setRange(0, 100);
    setValue(static_cast<int>(std::min(form.progressDone(), total) * 100 / total));
  } else if (maximum() != 0) {
    setRange(0, 0);
    reset();
  }
}

}  // namespace tolvane::gui
