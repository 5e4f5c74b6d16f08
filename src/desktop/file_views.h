#pragma once

class Control;
class QListWidget;

namespace desktop {

// The drive, folder and file lists shown as views of this machine's files: icons of the
// desktop's own, and a folder list with the folders from the root down to its own above its
// subfolders, each indented by its depth, as the classic folder list shows them.
bool isFileView(const Control& c);
// The rows of a folder list above its subfolders (the root down to the folder itself); 0 for
// the other lists. Row r of the view is list index r - rowsAbove.
int rowsAbove(const Control& c);
// Fills the view from the control when what it shows differs.
void fillFileView(QListWidget& list, const Control& c);

}  // namespace desktop
