#pragma once

#include "shell/products_part.h"

// The bulk building tools of the main form: imports from text files and databases, adding
// a folder, picture paths, bulk delete, export and bulk edit.
class Bulk : public ProductsPart {
  public:
    explicit Bulk(Products& form) : ProductsPart(form) {}

    // Imports from a text file or a database (`TextFiles`, `TextEdit`, `DBFiles`), bulk edit
    // and export through the placement board (build/get_files.cpp).
    void GetFiles();
    // Adding a folder, started by the link `Folder` (build/add_folder.cpp).
    void Folders();
    // Changing the pictures' path, started by the link `ChangePicPath`
    // (build/picture_paths.cpp).
    void ChP();
};
