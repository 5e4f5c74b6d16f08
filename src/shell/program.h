#pragma once

class Runtime;

// The program's title: the name its settings are stored under and the title of its boxes.
inline constexpr const char* ProgramTitle = "Catalogue Manager";

// Makes every form of the program known to the runtime by its name.
void RegisterForms(Runtime& rt);

// The program's entry: shows the splash, loads and shows the main form, shows the tip of
// the day. Runs on Runtime::Current(); ends by returning or by the program's End.
void SubMain();
