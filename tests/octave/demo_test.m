% SPDX-License-Identifier: MIT
% The demo on a small picture: its montages, and that it stops at planes that are not where they belong.
%
% captions.png was made by the call in its test and read by eye.

%!shared folder, picture
%! folder = tempname ();
%! mkdir (folder);
%! picture = fullfile (folder, 'picture.png');
%! imwrite (uint8 (20 + 30 * mod (magic (32), 7)), picture);

%!test <*the montages show the two profiles at a quarter of their size>
%! evalc ('attribute_profile_demo (picture, folder)');
%! for profile = {'area', 'std'; [100 1000 10000], [5 10 20]}
%!   AP = attribute_profile (imread (picture), profile{:});
%!   montage = attribute_profile_montage (AP, profile{2}, 1/4);
%!   assert (imread (fullfile (folder, [profile{1} '.png'])), montage);
%! endfor

%!test <*captions are legible, each with the digits of its threshold>
%! montage = attribute_profile_montage (zeros (1, 1, 7, 'uint8'), [1234567890, -3.5e+20, NaN]);
%! assert (montage, imread (file_in_loadpath ('captions.png')));

%!test <*a colour picture is shown as its grey levels are>
%! square = magic (32);
%! colour = uint8 (mod (cat (3, 3 * square, 7 * square', 11 * square), 251));
%! for k = 1:2
%!   imwrite ({colour, rgb2gray(colour)}{k}, picture);
%!   evalc ('attribute_profile_demo (picture, folder)');
%!   montages{k} = double (imread (fullfile (folder, 'area.png')));
%! endfor
%! assert (montages{1}, montages{2}, 1);

%!test <*misplaced planes are errors>
%! faults = {'n + 1', '1', 'middle plane';  % plane, what is added to it, part of the message
%!           '1', '-1', 'sides of the input';
%!           '2*n + 1', '1', 'sides of the input';
%!           '1', 'n', 'not those of threshold';
%!           'n', '(n > 1)', 'from bright to dark'};
%! for fault = faults'
%!   % A function typed in goes before one on the path.
%!   eval (sprintf (['function AP = attribute_profile (I, A, L)\n n = numel (L);\n AP = repmat (I, 1, 1, 2*n + 1);\n' ...
%!                   ' AP(:,:,%s) += %s;\nend'], fault{1:2}));
%!   fail ("evalc ('attribute_profile_demo (picture, folder)')", fault{3});
%! endfor

%!test
%! confirm_recursive_rmdir (false, 'local');
%! rmdir (folder, 's');
