// SPDX-License-Identifier: MIT
#ifndef ENTRY_WINDOWS_LINK_NAMES_HPP
#define ENTRY_WINDOWS_LINK_NAMES_HPP

// Names for the linker, on Windows. The compiler's option -include puts them before all else in every file that is
// linked with entry/windows/adapter.cpp: the entry layer calls the adapter's `mexErrMsgTxt` and defines the
// `mexFunction` that the adapter calls, while both plain names stay free for the host's and for the exported one.

#pragma redefine_extname mexErrMsgTxt entry_mexErrMsgTxt
#pragma redefine_extname mexFunction entry_mexFunction

#endif  // ENTRY_WINDOWS_LINK_NAMES_HPP
