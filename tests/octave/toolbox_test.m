% SPDX-License-Identifier: MIT
% What the functions of the toolbox have in common.

%!shared I, AP
%! I = uint8 (magic (6));
%! AP = attribute_profile (I, 'area', [2 3 4]);

%!test <*without the module the file of its help says what to do>
%! help = fullfile (fileparts (which ('attribute_profile')), 'attribute_profile.m');
%! alone = tempname ();
%! mkdir (alone);
%! copyfile (help, alone);
%! addpath (alone);
%! fail ("attribute_profile (I, 'area', 3)", 'build_attribute_profile compiles it beside attribute_profile.m');
%! rmpath (alone);
%! delete (fullfile (alone, 'attribute_profile.m'));
%! rmdir (alone);

%!test <*a string of MATLAB is the text in it>
%! S = @string;
%! assert (attribute_profile_thresholds (I, S ('area'), 2, 8, S ('max'), [1 9]), ...
%!         attribute_profile_thresholds (I, 'area', 2, 8, 'max', [1 9]));
%! printed = evalc ("EAP = extended_attribute_profile (I, S ('area'), 2:4, 4, S ('min'), S ('progress'));");
%! assert (EAP, AP);
%! assert (regexp (printed, '^Filtering Rule: min\nband 1 of 1, '), 1);
%! curve = @(A) attribute_profile_curve_picture (1:3, 1:3, 2, A);
%! assert (curve (S ('std')), curve ('s'));
%! fail ("attribute_profile_demo (S ('/none.png'), S ('/none'))", 'unable to find file.*/none.png');
%! fail ("build_attribute_profile (S ('/proc'))", "there is no folder '/proc'");

%!test <*MATLAB completes the inputs of each function of the toolbox>
%! folder = fileparts (which ('attribute_profile'));
%! signatures = jsondecode (fileread (fullfile (folder, 'resources', 'functionSignatures.json')));
%! names = fieldnames (signatures)(2:end);
%! files = dir (fullfile (folder, '*.m'));
%! assert (sort (strcat (names, '.m')), setdiff (sort ({files.name})', {'Contents.m'}));
