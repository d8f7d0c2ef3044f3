#pragma once

// Marks what a shared library of ours offers to others; everything else stays hidden.
#define CS_EXPORT __attribute__((visibility("default")))
