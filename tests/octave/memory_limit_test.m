% SPDX-License-Identifier: MIT
% A call that runs out of memory, wherever that happens in it, is an error like others, and the session goes on.

%!function limit_memory (room)  % `room` bytes beyond what the process has: ulimit -v
%!  has = 1024 * str2double (regexp (fileread ('/proc/self/status'), 'VmSize:\s*(\d+)', 'tokens'){1}{1});
%!  assert (system (sprintf ('prlimit --pid %d --as=%.0f:', getpid (), has + room)), 0);
%!endfunction

%!test <*ever more memory>
%! image = uint8 (mod (reshape (1:1e6, 1000, 1000) * 7919, 251));
%! unwind_protect
%!   for k = 1:15
%!     limit_memory ((4 + 4 * k) * 2^20);
%!     found{k} = 'a result';
%!     try
%!       attribute_profile (image, 'area', 10:10:100);
%!     catch failure
%!       found{k} = failure.message;
%!     end_try_catch
%!     clear ans
%!     assert (attribute_profile (uint8 ([4 9 3]), 'area', 2)(:)', uint8 ([9 9 9 4 9 3 4 4 3]));
%!   endfor
%! unwind_protect_cleanup
%!   limit_memory (2^40);
%! end_unwind_protect
%! % First there is no room for the result, then not for what computes it.
%! assert (unique (found, 'stable'), {'attribute_profile: failed to allocate 21000000 bytes of memory', ...
%!         "out of memory or dimension too large for Octave's index type", 'a result'});
