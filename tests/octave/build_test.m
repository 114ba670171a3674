% SPDX-License-Identifier: MIT
% Tests of build_attribute_profile, for run_octave_tests.

%!test <*the folder brings the sources of its module>
%! folder = tempname ();
%! mkdir (folder);
%! unwind_protect
%!   assert (regexp (evalc ('build_attribute_profile (folder)'), '^Compiling \d+ files .*Made ', 'once'), 1);
%!   addpath (folder);
%!   assert (which ('attribute_profile'), fullfile (folder, 'attribute_profile.mex'));
%!   AP = attribute_profile (uint64 ([2 2 9 9; 2 8 1 9; 7 7 1 3]), 'area', 3);
%!   assert (AP(:,:,3), uint64 ([2 2 9 9; 2 7 1 9; 7 7 1 3]));
%!   before = getenv ('CXX');
%!   setenv ('CXX', 'false');
%!   fail ("evalc ('build_attribute_profile (folder)')", 'the compiler failed');
%! unwind_protect_cleanup
%!   setenv ('CXX', before);
%!   rmpath (folder);
%!   confirm_recursive_rmdir (false, 'local');
%!   rmdir (folder, 's');
%! end_unwind_protect

%!test <*a folder that does not exist, or that nobody may write into, is an error before the work begins>
%! for folder = {'/proc', tempname()}
%!   fail ('build_attribute_profile (folder{1})', 'there is no folder');
%! endfor
