% SPDX-License-Identifier: MIT
% Where memory runs out a call is an error like others, wherever that happens in it, and the session goes on.

%!function limit_memory (room)
%!  % As `ulimit -v`, for this process: what it has and `room` bytes.
%!  has = 1024 * str2double (regexp (fileread ('/proc/self/status'), 'VmSize:\s*(\d+)', 'tokens'){1}{1});
%!  assert (system (sprintf ('prlimit --pid %d --as=%.0f:', getpid (), has + room)), 0);
%!endfunction

%!test <*a call with ever more memory>
%! image = uint8 (mod (reshape (1:1e6, 1000, 1000) * 7919, 251));
%! small = uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]);
%! found = {};
%! unwind_protect
%!   for room = 2^20 * (8:4:64)
%!     limit_memory (room);
%!     try
%!       AP = attribute_profile (image, 'area', 10:10:100);
%!       found{end+1} = 'a result';
%!       assert (AP(:,:,11), image);
%!     catch failure
%!       found{end+1} = failure.message;
%!     end_try_catch
%!     clear AP
%!     AP = attribute_profile (small, 'area', 3);
%!     assert (AP(:,:,3), uint8 ([2 2 9 9; 2 7 1 9; 7 7 1 3]));
%!   endfor
%! unwind_protect_cleanup
%!   limit_memory (2^40);
%! end_unwind_protect
%! % First there is no room for the result, then not for what computes it.
%! assert (unique (found, 'stable'), {'attribute_profile: failed to allocate 21000000 bytes of memory', ...
%!         "out of memory or dimension too large for Octave's index type", 'a result'});
