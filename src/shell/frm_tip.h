#pragma once

#include <string>
#include <vector>

#include "forms/form.h"

// The tip of the day: one line of TIPOFDAY.TXT at each start, and on demand.
class frmTip : public Form {
  public:
    frmTip();

    std::vector<std::string> Tips;
    int CurrentTip = 0;  // 1-based; 0 before the first tip

    void Form_Load() override;
    bool LoadTips(const std::string& sFile);
    void DoNextTip();
    void DisplayCurrentTip();
    void cmdNextTip_Click();
    void cmdOK_Click();
    void chkLoadTipsAtStartup_Click();
};
