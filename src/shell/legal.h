#pragma once

// What the splash and about forms say of the program.
namespace legal {
inline constexpr const char* Version = "Version 1.0";
inline constexpr const char* Line0 =
    "This program keeps the catalogue, stock and orders of one shop on one computer.";
inline constexpr const char* Line1 =
    "It is provided as is, without warranty of any kind. Keep a copy of your catalogue file.";
}  // namespace legal
