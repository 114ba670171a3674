% SPDX-License-Identifier: MIT
% The demo on a small picture: its montages, and that it stops at planes that are not where they belong.

%!shared folder, picture
%! folder = tempname ();
%! mkdir (folder);
%! picture = fullfile (folder, 'picture.png');
%! imwrite (uint8 (20 + 30 * mod (magic (32), 7)), picture);

%!test <*montages of the grey levels of pictures of 8 and 16 bits, of colours, with a colour map and of two values>
%! square = magic (32);
%! grey = uint8 (20 + 30 * mod (square, 7));
%! colour = uint8 (mod (cat (3, 3 * square, 7 * square', 11 * square), 251));
%! map = [0 0.2 0.5 0.4 1 0.3 0.7; 0.1 0 1 0.6 0.3 0 0.9; 1 0.4 0.8 0 0 0.6 0.2]';
%! levels = uint8 (255 * map * [0.299; 0.587; 0.114]);
%! pairs = {{grey}, grey; {colour}, rgb2gray(colour); {257 * uint16(colour)}, 257 * uint16(rgb2gray (colour)); ...
%!          {uint8(mod (square, 7)), map}, levels(mod (square, 7) + 1); {square > 500}, 255 * uint8(square > 500)};
%! for pair = pairs'
%!   imwrite (pair{1}{:}, picture);
%!   evalc ('attribute_profile_demo (picture, folder)');
%!   for profile = {'area', 'std'; [100 1000 10000], [5 10 20]}
%!     montage = attribute_profile_montage (attribute_profile (pair{2}, profile{:}), profile{2}, 1/4);
%!     assert (double (imread (fullfile (folder, [profile{1} '.png']))), double (montage), 3);
%!   endfor
%! endfor
%! fail ("attribute_profile_demo (picture)", 'give a picture file and a folder');
%! fail ("attribute_profile_demo (picture, folder, 0)", 'STEP has to be');
%! fail ("attribute_profile_demo (picture, [folder '/none'])", 'there is no folder .*/none');

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
