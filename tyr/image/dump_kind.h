#pragma once

/// Kinds of image files that a picture is dumped to.
enum DumpKind { kDumpNone = 0, kDumpXwd = 1, kDumpGif = 2, kDumpImage = 3, kDumpPng = 4 };
