% SPDX-License-Identifier: MIT
% What the module returns in Octave, whatever form Octave keeps its arrays in.

%!test <*the class of the image changes no value of exact attributes>
%! image = mod (magic (16), 50);
%! for settings = {{'area', [2 9 40], 4, 'min'}, {'diagonal', [3 7.5], 8, 'sub'}, {'a', [5 1 Inf NaN], 8, 'max'}}
%!   evalc ('expected = attribute_profile (uint8 (image), settings{1}{:});');
%!   for name = {'int8', 'uint16', 'int16', 'uint32', 'int32', 'uint64', 'int64'}
%!     evalc ('AP = attribute_profile (cast (image, name{1}), settings{1}{:});');
%!     assert (AP, cast (expected, name{1}));
%!   endfor
%! endfor

%!shared I, AP
%! I = uint8 (magic (6));
%! AP = attribute_profile (I, 'area', [2 3 4]);

%!test <*lazy and special forms of arrays are read like full ones>
%! assert (attribute_profile (I, 'area', 2:4), AP);
%! assert (attribute_profile (I, 'area', complex ([2 3 4], 1)), AP);
%! assert (attribute_profile (I, "area", find ([0 1 1 1])), AP);
%! assert (attribute_profile (I, 'a', eye (3)(1,:)), attribute_profile (I, 'a', [1 0 0]));
%! assert (attribute_profile (I(:,[1 3 5])(:,1)', 'a', 2), attribute_profile (double (I(:,1))' + uint8 (0), 'a', 2));
%! assert (attribute_profile (int16 (1):int16 (5), 'a', 2)(:,:,1), int16 ([2 2 3 4 5]));
%! assert (attribute_profile (I, ['a'; 'r'; 'e'; 'a'], [2 3 4]), AP);

%!test <*rows, columns and single pixels are images>
%! assert (attribute_profile (int64 (-7), 'd', [1 2]), repmat (int64 (-7), 1, 1, 5));
%! assert (size (attribute_profile (zeros (1, 9, 'int32'), 'i', 1)), [1 9 3]);
%! assert (size (attribute_profile (zeros (9, 1, 'uint16'), 's', [1 2])), [9 1 5]);

%!test <*the input is left as it was>
%! before = I + 0;
%! attribute_profile (I, 'area', 40, 4);
%! assert (I, before);

%!test <*the longest row and column are exact>
%! long = uint8 (mod (0:32764, 2));
%! assert (attribute_profile (long, 'a', 2), cat (3, ones (1, 32765, 'uint8'), long, zeros (1, 32765, 'uint8')));
%! assert (attribute_profile (long', 'a', 2)(:,:,2), long');

%!test <*a given rule is printed, a default is not>
%! assert (evalc ("attribute_profile (I, 'a', 3, 8, 'max');"), "Filtering Rule: max\n");
%! assert (evalc ("attribute_profile (I, 'a', 3, [], '');"), '');

%!test <*usage text and help>
%! usage = evalc ('attribute_profile');
%! assert (sum (usage == "\n"), 31);
%! assert (! isempty (strfind (usage, "\n   AP = ATTRIBUTE_PROFILE(I, A, L)\n")));
%! assert (strncmp (get_help_text ('attribute_profile'), 'ATTRIBUTE_PROFILE  Attribute profile', 36));

%!test <*without the module the file of its help says what to do>
%! folder = tempname ();
%! mkdir (folder);
%! copyfile (fullfile (fileparts (which ('attribute_profile')), 'attribute_profile.m'), folder);
%! addpath (folder);
%! unwind_protect
%!   fail ("attribute_profile (I, 'area', 3)", 'build_attribute_profile compiles it beside attribute_profile.m');
%! unwind_protect_cleanup
%!   rmpath (folder);
%!   delete (fullfile (folder, 'attribute_profile.m'));
%!   rmdir (folder);
%! end_unwind_protect
%! assert (attribute_profile (I, 'area', [2 3 4]), AP);

%!test <*clear unloads the module>
%! mapped = @() ! isempty (strfind (fileread ('/proc/self/maps'), 'attribute_profile.mex'));
%! assert (mapped ());
%! clear attribute_profile
%! assert (! mapped ());
%! assert (attribute_profile (I, 'area', [2 3 4]), AP);

%!test <*a string of MATLAB is the text in it>
%! S = @string;
%! assert (attribute_profile_thresholds (I, S ('area'), 2, 8, S ('max'), [1 9]), ...
%!         attribute_profile_thresholds (I, 'area', 2, 8, 'max', [1 9]));
%! printed = evalc ("EAP = extended_attribute_profile (I, S ('area'), 2:4, 4, S ('min'), S ('progress'));");
%! assert (EAP, AP);
%! assert (regexp (printed, '^Filtering Rule: min\nband 1 of 1, '), 1);
%! assert (attribute_profile_curve_picture (1:3, 1:3, 2, S ('std')), attribute_profile_curve_picture (1:3, 1:3, 2, 's'));
%! fail ("attribute_profile_demo (S ('/none.png'), S ('/none'))", 'unable to find file.*/none.png');
%! fail ("build_attribute_profile (S ('/proc'))", "there is no folder '/proc'");

%!test <*what MATLAB completes are the functions of the toolbox and their inputs, in their order>
%! folder = fileparts (which ('attribute_profile'));
%! signatures = jsondecode (fileread (fullfile (folder, 'resources', 'functionSignatures.json')));
%! names = fieldnames (signatures)(2:end);
%! files = dir (fullfile (folder, '*.m'));
%! assert (sort (strcat (names, '.m')), setdiff (sort ({files.name})', {'Contents.m'}));
%! for k = 1:numel (names)
%!   inputs = signatures.(names{k}).inputs;  % a cell where not all have the same fields
%!   if iscell (inputs)
%!     inputs = cellfun (@(input) input.name, inputs, 'UniformOutput', false);
%!   else
%!     inputs = {inputs.name}';
%!   endif
%!   help = fileread (fullfile (folder, [names{k} '.m']));
%!   assert (! isempty (regexp (help, ['%   (\w+ = )?' names{k} ' \(' strjoin(inputs(1:max (1, end-2)), ', ')], 'once')), help(1:200));
%! endfor
