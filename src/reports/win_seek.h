#pragma once

#include <string>

#include "forms/form.h"

// The file seeker: every file that matches a pattern below a folder, found by walking the
// folder tree depth first, listed by full path. Used by hand, or driven by adding a folder.
class WinSeek : public Form {
  public:
    WinSeek();

    // True while a search may go on.
    NAMED_VAR(bool, SeekAllowed);

    void Form_Load() override;
    void cmdSearch_Click();
    void cmdExit_Click();
    void ResetSeeker();
    // The recursive walk; true when the search is to be abandoned.
    bool WalkFolder(const std::string& FolderPath, int SubCount, const std::string& ParentPath);
    void dirList_Change();
    void dirList_LostFocus();
    void drvList_Change();
    void txtSearchSpec_Change();
    void txtSearchSpec_GotFocus();

  private:
    // Lists the matching files of the folder in hand; false once the list is full.
    void listFiles();
};
