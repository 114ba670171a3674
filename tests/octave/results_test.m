% SPDX-License-Identifier: MIT
% What the module returns in Octave, whatever form Octave keeps its arrays in. Values of all classes:
% tests/matlab/digests_of_calls.m.

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

%!test <*usage text and help>
%! usage = evalc ('attribute_profile');
%! assert (sum (usage == "\n"), 31);
%! assert (! isempty (strfind (usage, "\n   AP = ATTRIBUTE_PROFILE(I, A, L)\n")));
%! assert (strncmp (get_help_text ('attribute_profile'), 'ATTRIBUTE_PROFILE  Attribute profile', 36));
