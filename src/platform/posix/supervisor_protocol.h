#pragma once

#include <chrono>
#include <cstdint>

/// What a command's supervisor and the program that started it say to each other.
///
/// The supervisor is started as `lumeno-supervisor LIMIT FOLDER SHELL COMMAND`; LIMIT is a moment of the
/// steady clock in nanoseconds. It holds both ends of the command's pipes: it gives the writing ends to the
/// command and reads the other ends only once nobody else does, so that a command never stalls or dies
/// because the program has gone. The program going is the end of file on the control socket.
namespace lumeno::supervision {

using Clock = std::chrono::steady_clock;

/// The descriptors that the supervisor starts with; 0 is the command's standard input, 1 and 2 the writing
/// ends.
constexpr int controlDescriptor = 3;
constexpr int outputDescriptor = 4;
constexpr int errorDescriptor = 5;

/// From the request to end (SIGTERM) to the end (SIGKILL).
constexpr std::chrono::milliseconds grace{2000};
/// From the request to end to the report of it, also when something cannot be ended.
constexpr std::chrono::milliseconds reportAfterStop{2400};
/// From the limit to the answer, whatever the supervisor does.
constexpr std::chrono::milliseconds answerAfterStop{2800};

enum class Step : int32_t { process, folder, shell };
enum class Reason : int32_t {
  itself,      ///< the shell ended by itself
  limit,       ///< stopped at the limit
  request,     ///< stopped because the program asked for it
  foreignEnd,  ///< stopped because somebody ended the supervisor
};

/// From the supervisor; one packet each.
struct Report {
  enum class Kind : int32_t { started, notStarted, ended };
  Kind kind;
  int32_t shell = -1;  ///< started: process, group and session of the shell
  Step step{};         ///< notStarted: where it failed …
  int32_t error = 0;   ///< … and the error number
  Reason reason{};     ///< ended. After `itself` the shell's children may go on.
  int32_t status = 0;  ///< ended: the shell's status, or 128 plus the signal's number
};

/// To the supervisor: one packet of any content asks it to stop the command.
constexpr char stopRequest = 's';

}  // namespace lumeno::supervision
