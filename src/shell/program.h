#pragma once

class Runtime;

// Makes every form of the program known to the runtime by its name.
void RegisterForms(Runtime& rt);

// The program's entry: shows the splash, loads and shows the main form, shows the tip of
// the day. Runs on Runtime::Current(); ends by returning or by the program's End.
void SubMain();
