% SPDX-License-Identifier: MIT
% The tests for MATLAB, each of which is a method of their class.

%!test
%! tests = setdiff (methods ('AttributeProfileTest'), [methods('matlab.unittest.TestCase'); {'AttributeProfileTest'}]);
%! assert (numel (tests), 6);
%! for name = tests'
%!   tic;
%!   feval (name{1}, AttributeProfileTest ());
%!   printf ('%s: %.1f s\n', name{1}, toc);
%! endfor
