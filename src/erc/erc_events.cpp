#include "erc/erc_events.h"

#include <utility>

#include "erc/ecm_form.h"
#include "erc/emc_listing.h"
#include "erc/erc_unique.h"

namespace tolvane {

namespace {
using Plain = void (*)(Program&);

void add(EventTable& table, const char* form, const char* control, EventKind kind, Plain handler) {
  table.add(form, control, kind, [handler](Program& p, const EventArgs&) { handler(p); });
}
}  // namespace

void registerErcEvents(EventTable& table) {
  using namespace erc;
  add(table, "Opening", "PictureChangeRatio", EventKind::Click, PictureChangeRatioClick);
  add(table, "Opening", "PictureChangeRatio", EventKind::RightClick, PictureChangeRatioRightClick);
  add(table, "Opening", "PictureEMC", EventKind::Click, PictureEMCClick);
  add(table, "Opening", "PictureEMC", EventKind::RightClick, PictureEMCRightClick);
  add(table, "Opening", "menuERCUnique", EventKind::Click, ERCUniqueMenu);
  add(table, "Opening", "TextERCUnique", EventKind::Enter, TextERCUniqueEnter);

  add(table, "FormListEMCs", "FormListEMCs", EventKind::Load, FormListEMCsLoad);
  add(table, "FormListEMCs", "ListEMCs", EventKind::Click, ListEMCsClick);
  add(table, "FormListEMCs", "Text1", EventKind::Enter, Text1Enter);

  add(table, "DialogERC", "LabelDone", EventKind::Click, DialogERCDone);
  add(table, "DialogERC", "LabelCancel", EventKind::Click, DialogERCCancel);

  add(table, "FormECM", "LabelDone", EventKind::Click, FormECMClose);
  add(table, "FormECM", "LabelCancel", EventKind::Click, FormECMClose);
  add(table, "FormECM", "ListControlledMorph", EventKind::DblClick, ListControlledMorphDblClick);
  add(table, "FormECM", "TextPBM1", EventKind::Enter, TextPBM1Enter);
  add(table, "FormECM", "ListConFigECM", EventKind::DblClick, ListConFigECMDblClick);
  add(table, "FormECM", "ListActorsECM", EventKind::DblClick, ListActorsECMDblClick);
  add(table, "FormECM", "TextPBMRatio", EventKind::Enter, TextPBMRatioEnter);
}

}  // namespace tolvane
