% SPDX-License-Identifier: MIT
% The errors for lack of memory as an Octave user sees them, and that the session goes on. All other texts:
% tests/matlab/messages_of_faults.m.

%!test <*images beyond 32765 rows or columns run out of memory, not into it>
%! for size = {[32766 1], [1 32766], [65537 1], [2 65536], [65536+3 3]}
%!   fail ("attribute_profile (zeros (size{1}, 'uint8'), 'a', 1)", ...
%!         "out of memory or dimension too large for Octave's index type");
%!   assert (attribute_profile (uint8 (7), 'a', 0), uint8 (cat (3, 7, 7, 7)));
%! endfor

%!test <*a profile too large for the machine is an error>
%! fail ("attribute_profile (zeros (5000, 5000, 'uint8'), 'a', 1:1e7)", 'failed to allocate \d+ bytes of memory');
