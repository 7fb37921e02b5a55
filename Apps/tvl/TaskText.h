// What is told of a task in a line.
#pragma once

#include "ITaskProgress.h"

#include <chrono>
#include <string>

/// A span as people read it: "0:05", "12:30", "1:02:03".
std::wstring SpanText(std::chrono::steady_clock::duration span);
/// Percent that are done for certain, 0 to 100. Steps that together are worth more than their task don't lead beyond.
int WholePercent(double progress);
/// How far a task is, without its name: "[####      ]  40 %  8.0 %/s  0:08 left  reading". A task that has not told
/// any progress has no more than its step.
/// @param elapsed   since the task's start
/// @param barWidth  characters between the brackets; 0 for none
std::wstring ProgressText(
    TvlUtl::ITaskProgress& task, std::chrono::steady_clock::duration elapsed, std::size_t barWidth);
/// How a task that is about to go has ended: "done in 0:05", "cancelled" or "failed: the disk is full".
std::wstring EndText(TvlUtl::ITaskProgress& task, std::chrono::steady_clock::duration elapsed);
