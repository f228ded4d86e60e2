#include "ui/form_editor.h"

namespace tolvane::ui {

FormEditor::FormEditor() : Form("FormEditor") { reset(); }

void FormEditor::reset() {
  setCaption(kEditorUnsetCaption);
  setVisible(false);
  LeftPaneFile.clear();
  LeftPaneChanged = 0;
  RightPaneChanged = 0;
  FoundPosition = -2;

  for (TextPane* pane : {&RichTextBox1, &RichTextBox2}) {
    pane->text().setText({});
    pane->setBackColor(kWhite);
    pane->setWidth(TextPane::kFullWidth);
    pane->textChanged();
  }
  RichTextBox1.setVisible(true);
  RichTextBox2.setVisible(false);
  bringToFront(RichTextBox1);

  LabelSecFile.setCaption("");
  LabelFileSizeEd1.setCaption("");
  LabelFileSizeEd2.setCaption("");
  LabelFileSizeEd2.setVisible(false);
  LabelLineNum.setCaption("Line");
  LabelLineNum.setForeColor(kBlack);
  TextLineNum.setText("");
  TextLineNum.setForeColor(kBlack);
  CommandGotoLineNum.setCaption("Go to line");

  LabelFind.setCaption("Find:");
  LabelReplace.setCaption("Replace with:");
  CheckWholeWord.setCaption("Whole word");
  CheckMatchCase.setCaption("Match case");
  ComboFind.clear();
  ComboFind.setText("");
  TextReplace.setText("");
  for (Control* c : std::initializer_list<Control*>{&LabelFind, &ComboFind, &CheckWholeWord, &CheckMatchCase,
                                                    &LabelReplace, &TextReplace})
    c->setVisible(false);

  ListMRU.clear();
  ListMRU.setVisible(false);
  ListMRU.setToolTip("Click for left  pane, shift/click for right");
  Timer1.setEnabled(false);
  Timer2.setEnabled(false);
}

void FormEditor::bringToFront(TextPane& pane) {
  TextPane& other = &pane == &RichTextBox1 ? RichTextBox2 : RichTextBox1;
  if (pane.zOrder() <= other.zOrder()) pane.setZOrder(other.zOrder() + 1);
}

}  // namespace tolvane::ui
