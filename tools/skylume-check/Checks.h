#pragma once

class Findings;
class Installation;

// What can be checked of an installation. The checks are independent of each other, except that checkStructure()
// does not repeat what checkLanguageFiles() found.

void checkLanguageFiles(const Installation& installation, Findings& findings);
void checkStructure(const Installation& installation, Findings& findings);
void checkPlugins(const Installation& installation, Findings& findings);
void checkLibraries(const Installation& installation, Findings& findings);
void checkMenus(const Installation& installation, Findings& findings);
void checkToolBars(const Installation& installation, Findings& findings);
void checkOperatorTexts(const Installation& installation, Findings& findings);
void checkUnits(const Installation& installation, Findings& findings);
void checkIniFiles(const Installation& installation, Findings& findings);
void checkNames(const Installation& installation, Findings& findings);
void checkLanguageChoice(const Installation& installation, Findings& findings);
void checkSkins(const Installation& installation, Findings& findings);
