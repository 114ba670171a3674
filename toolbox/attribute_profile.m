function varargout = attribute_profile (varargin)
%ATTRIBUTE_PROFILE  Attribute profile of a two-dimensional integer image.
%
%   AP = attribute_profile (I, A, L)
%   AP = attribute_profile (I, A, L, C)
%   AP = attribute_profile (I, A, L, C, F)
%   attribute_profile ()
%
%   Simplifies the image I step by step: dark regions whose attribute A lies
%   below a threshold of L are raised to their surroundings, bright ones are
%   lowered, and each threshold gives one plane of either kind.  A region that
%   stays keeps its outline exactly; no edge moves.  The last form prints a
%   usage text.
%
%   Input
%
%   I  the image, rows x columns, of class uint8, int8, uint16, int16, uint32,
%      int32, uint64 or int64; not empty.  A single row or column is an image.
%   A  the attribute of a region, a string: 'a' or 'area', 'd' or 'diagonal',
%      'i' or 'inertia', 's' or 'std'; see below.
%   L  the thresholds, a full 1 x N array of class double, N at least 1, used
%      in the order given.  A region whose attribute equals a threshold stays.
%   C  the connectivity, a full double scalar: 4 (pixels that share an edge) or
%      8 (or a corner).  Default 4; [] stands for the default.
%   F  the filtering rule, a string: 'min', 'max', 'direct' or 'sub'; see below.
%      Default 'min' for area and diagonal, 'sub' for inertia and standard
%      deviation; [] stands for the default.  A rule that is given is printed.
%
%   Output
%
%   AP  rows x columns x (2N + 1), of the class of I:
%         planes 1 to N           dark regions removed, thresholds L(N) to L(1)
%         plane N + 1             the input image
%         planes N + 2 to 2N + 1  bright regions removed, thresholds L(1) to L(N)
%       With increasing thresholds the planes run from the most raised image
%       through the input to the most lowered one.
%
%   Regions and attributes
%
%   The regions are the connected sets of pixels with values of at most (dark)
%   or at least (bright) some grey level.  They lie inside one another and form
%   a tree; a removed region takes the value of the region around it.  For a
%   region of n pixels, H rows high and W columns wide:
%
%   area      n                                            pixels
%   diagonal  sqrt (H^2 + W^2), of the bounding box        pixels
%   inertia   (sum ((r - mean (r)).^2) +
%              sum ((c - mean (c)).^2)) / n^2              no unit
%             with r, c the rows and columns of the pixels: small for compact
%             shapes of any size, greater for elongated ones; summed in single
%             precision, so that a small region far from the upper left corner
%             can get a wrong value, even one below 0
%   std       sqrt (mean (v.^2) - mean (v)^2)              grey levels
%             with v the values of the pixels
%
%   Area and diagonal grow from a region to the one around it.  Inertia and
%   standard deviation need not: there the rules differ.
%
%   Filtering rules
%
%   min     a region stays if it and all the regions around it reach the
%           threshold
%   max     a region stays if it or any region inside it reaches the threshold
%   direct  each region is judged by itself
%   sub     each region is judged by itself, and what lies inside a removed
%           region moves with it: its contrast is kept
%
%   Limits
%
%   I has at most 32765 rows and 32765 columns; a larger one ends the call with
%   an allocation error of the host.  Beside AP a call needs about 14 bytes of
%   memory for each pixel of an 8-bit photograph, 85 in the worst case, and
%   Octave copies AP once on return.
%
%   Area thresholds are cut to whole numbers.  Inertia and standard deviation are
%   summed in single precision, and the squares of the pixel values in integers
%   that wrap: 'std' is of use for magnitudes up to 46340 in uint16 and int32,
%   65535 in uint32, 3037000499 in int64 and 4294967295 in uint64.  Single
%   precision has some seven digits: 'std' is inexact for large regions whose
%   values are far from 0 and differ little (bring the mean to 0, in int16), and
%   'inertia' for small regions thousands of pixels from the upper left corner
%   (cut the image into tiles).
%
%   Example
%
%     I = uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]);
%     AP = attribute_profile (I, 'area', 3);
%     AP(:,:,1)        % dark regions of less than 3 pixels are filled
%     AP(:,:,2)        % I
%     AP(:,:,3)        % bright regions of less than 3 pixels are cut down
%
%   See also attribute_profile_thresholds, extended_attribute_profile,
%   differential_attribute_profile, attribute_profile_montage,
%   attribute_profile_demo, imread, imwrite

% SPDX-License-Identifier: MIT

  % The module beside this file goes before it.
  error ('attribute_profile: the module is missing: build_attribute_profile compiles it beside attribute_profile.m');
end

%!shared I
%! I = uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]);

%!test <*4-connected areas, worked out by hand>
%! AP = attribute_profile (I, 'area', 3);
%! assert (AP(:,:,1), uint8 ([2 2 9 9; 2 8 3 9; 7 7 3 3]));
%! assert (AP(:,:,2), I);
%! assert (AP(:,:,3), uint8 ([2 2 9 9; 2 7 1 9; 7 7 1 3]));

%!test <*8-connected areas, worked out by hand>
%! AP = attribute_profile (I, 'a', 3, 8);
%! assert (AP(:,:,1), uint8 ([2 2 9 9; 2 8 2 9; 7 7 2 3]));
%! assert (AP(:,:,3), I);

%!test <*the four rules, worked out by hand>
%! rules = {'min', 'max', 'direct', 'sub'};
%! lowered = int16 ([1 1 1 1 1; 4 4 3 3 1; 4 4 1 1 1; 2 2 1 1 1]);
%! for k = 1:4
%!   AP = attribute_profile (int16 ([4 9 3 5 1]), 'std', 2.5, 4, rules{k});
%!   assert (AP(:,:,3), lowered(k,:));
%! endfor

%!test <*thresholds are used in their order>
%! AP = attribute_profile (I, 'area', [3 12 2]);
%! for k = 1:3
%!   one = attribute_profile (I, 'area', [3 12 2](k));
%!   assert (AP(:,:,[4-k, 4+k]), one(:,:,[1 3]));
%! endfor

%!assert (attribute_profile (I, 's', [1 2]), attribute_profile (I, 'std', [1 2], 4, 'sub'))
%!assert (attribute_profile (I, 'd', 3), attribute_profile (I, 'diagonal', 3, [], 'min'))
%!error <Input 3 has to be a 1xN array of double> attribute_profile (I, 'a', single (3))
