% SPDX-License-Identifier: MIT
% What the functions of the toolbox have in common.

%!test <*without the module the file of its help says what to do>
%! help = fullfile (fileparts (which ('attribute_profile')), 'attribute_profile.m');
%! alone = tempname ();
%! mkdir (alone);
%! copyfile (help, alone);
%! addpath (alone);
%! fail ("attribute_profile (uint8 (1), 'area', 3)", 'build_attribute_profile compiles it beside attribute_profile.m');
%! rmpath (alone);
%! delete (fullfile (alone, 'attribute_profile.m'));
%! rmdir (alone);

%!test <*a string of MATLAB names the files too>
%! S = @string;
%! fail ("attribute_profile_demo (S ('/none.png'), S ('/none'))", 'unable to find file.*/none.png');

%!test <*MATLAB completes the inputs of each function of the toolbox>
%! folder = fileparts (which ('attribute_profile'));
%! signatures = jsondecode (fileread (fullfile (folder, 'resources', 'functionSignatures.json')));
%! names = fieldnames (signatures)(2:end);
%! files = dir (fullfile (folder, '*.m'));
%! assert (sort (strcat (names, '.m')), setdiff (sort ({files.name})', {'Contents.m'}));
