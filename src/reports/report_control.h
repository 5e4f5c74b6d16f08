#pragma once

#include <string>

// The `Report` control of the main form: the report engine as the program drives it. The
// program sets the window, the database and the report file, then sets Action to 1 to run.
class ReportControl {
  public:
    int WindowState = 0;
    std::string WindowTitle;
    std::string ReportFileName;
    int Destination = 0;  // 0: the screen's report window
    bool DiscardSavedData = false;

    // Only the data file 0 exists; another index is fault 9.
    const std::string& DataFiles(int index) const;
    void SetDataFiles(int index, const std::string& path);

    // 1 runs the report file over DataFiles(0), afresh, and shows it in the report window;
    // it returns when the window is up. A missing or broken report file, a database that
    // cannot be read, or another destination than 0 is a fault, and no window opens.
    void SetAction(int action);

  private:
    std::string dataFile0_;
};
