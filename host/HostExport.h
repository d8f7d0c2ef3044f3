#pragma once

// Marks what the platform's library offers to others; everything else stays hidden.
#define CS_HOST_EXPORT __attribute__((visibility("default")))
