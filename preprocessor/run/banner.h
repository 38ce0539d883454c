#pragma once

/// Prints the name, version, build time and copyright holder.
void printBanner();
