#pragma once

#include <cstddef>

/// Storage for the bytes of texts. Large blocks come straight from the system and go straight back
/// to it, so that a run over many files never keeps what an earlier one needed.

/// Null when there is no memory.
void* allocateTextBlock(std::size_t bytes) noexcept;
/// Keeps the bytes that fit. Null when there is no memory; the old block is then untouched.
void* resizeTextBlock(void* block, std::size_t oldBytes, std::size_t bytes) noexcept;
/// `bytes` is the size that the block was last given.
void releaseTextBlock(void* block, std::size_t bytes) noexcept;
