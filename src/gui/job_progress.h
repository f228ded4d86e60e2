// The bar that tells how far a window's long job is: a busy bar while the job runs, and
// the percentage done when the file it works on is large.
#pragma once

#include <QProgressBar>
#include <cstdint>

namespace tolvane::ui {
class Form;
}

namespace tolvane::gui {

class JobProgressBar : public QProgressBar {
 public:
  // Files from this size on get a percentage: a smaller one is done before a percentage
  // could be read, and the busy bar says enough.
  static constexpr std::uint64_t kMeasuredFrom = 20u << 20;

  explicit JobProgressBar(QWidget* parent = nullptr);
  // Shows the busy job of `form` and how far it is, or hides while the form is at rest.
  void follow(const ui::Form& form);
};

}  // namespace tolvane::gui
