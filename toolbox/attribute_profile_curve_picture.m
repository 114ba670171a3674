function picture = attribute_profile_curve_picture (X, Y, L)
%ATTRIBUTE_PROFILE_CURVE_PICTURE  A granulometric curve and its thresholds in one picture.
%
%   picture = attribute_profile_curve_picture (X, Y)
%   picture = attribute_profile_curve_picture (X, Y, L)
%
%   Draws what attribute_profile_thresholds returns: the curve in black, its
%   thresholds as squares with their numbers above, and in grey the straight lines
%   between them.  Needs no display.
%
%   Input
%
%   X  the thresholds of the curve, 1 x n, increasing, n at least 2.
%   Y  how much each of them removes, 1 x n, in grey levels, 0 or more.
%   L  the chosen thresholds, 1 x N, increasing, from X(1) to X(n).  Those that
%      are not in X are drawn where they lie on the curve.  Without L, or for [],
%      the curve alone is drawn.
%
%   Output
%
%   picture  a matrix of class uint8 for imshow and imwrite, more than 600 columns
%            wide.  X runs to the right from X(1) to X(n), which stand below: even
%            if the X are evenly spaced or X(1) is not positive, logarithmic
%            otherwise.  Y runs from 0, at the bottom, to its greatest value.
%
%   Errors
%
%   Inputs that are not as above are errors.
%
%   Example
%
%     I = uint8 (28 * magic (16));
%     [L, X, Y] = attribute_profile_thresholds (I, 'area', 3);
%     imwrite (attribute_profile_curve_picture (X, Y, L), fullfile (tempdir, 'curve.png'));
%
%   See also attribute_profile_thresholds, attribute_profile_montage, imwrite

% SPDX-License-Identifier: MIT

  if nargin < 3
    L = [];
  end
  if ~is_increasing (X) || numel (X) < 2
    error ('attribute_profile_curve_picture: X has to be increasing numbers, two at least');
  end
  if ~isnumeric (Y) || numel (Y) ~= numel (X) || ~all (Y(:) >= 0 & Y(:) < Inf)
    error ('attribute_profile_curve_picture: Y has to be as many numbers as X, 0 or more');
  end
  if ~is_increasing (L) || any (L < X(1)) || any (L > X(end))
    error ('attribute_profile_curve_picture: L has to be increasing numbers from X(1) to X(end)');
  end
  X = double (X(:)');
  Y = double (Y(:)');
  L = double (L(:)');

  scale = @(x) x;
  if X(1) > 0 && ~is_even (X)
    scale = @log;
  end
  height = 300;
  width = 600;
  highest = caption (max (Y));
  margin = 8;  % more than a pen is wide
  left = size (highest, 2) + margin;
  total = left + width + margin;
  ends = scale (X([1 end]));
  column = @(x) left + 1 + round ((scale (x) - ends(1)) * ((width - 1) / diff (ends)));

  captions = cellfun (@caption, num2cell (L), 'UniformOutput', false);
  [starts, lines] = places_of (captions, column (L), total);
  line_height = 22;
  top = margin + line_height * max ([lines, 1]);
  bottom = top + height;
  row = @(y) bottom - round ((height - 1) * (y / max ([Y, realmin])));

  picture = repmat (uint8 (255), bottom + margin + line_height, total);
  for k = 1:numel (L)
    picture(top+1-line_height*lines(k):bottom,column(L(k))) = 160;
  end
  picture([top+1 bottom],left+(1:width)) = 160;
  picture(top+1:bottom,left+[1 width]) = 160;

  knots = [X(1), L, X(end)];
  levels = interp1 (scale (X), Y, scale (knots));
  if ~isempty (L)
    picture = with_line (picture, row (levels), column (knots), 1, 160);
  end
  picture = with_line (picture, row (Y), column (X), 0, 0);
  for k = 2:numel (knots) - 1
    picture(row (levels(k))+(-3:3),column (knots(k))+(-3:3)) = 0;
    picture = with_text (picture, captions{k-1}, top - line_height * lines(k-1), starts(k-1));
  end
  picture = with_text (picture, highest, top, 1);
  first = caption (X(1));
  last = caption (X(end));
  picture = with_text (picture, first, bottom + margin, left + 1);
  picture = with_text (picture, last, bottom + margin, total - size (last, 2) + 1);
end

function valid = is_increasing (values)
  valid = isnumeric (values) && all (isfinite (values(:))) && all (diff (double (values(:))) > 0);
end

function even = is_even (X)
  steps = diff (X);
  even = max (steps) - min (steps) <= 1e-6 * max (steps);
end

% Whole numbers are written whole: areas have up to ten digits.
function mask = caption (value)
  if value == round (value) && abs (value) < 1e10
    text = sprintf ('%.0f', value);
  else
    text = sprintf ('%.4g', value);
  end
  mask = repelem (caption_text (text), 2, 2);
end

% The first column of each caption, centred at its mark but inside the picture, and its line, counted upwards from 1:
% the lowest one in which it leaves the captions before it legible.
function [starts, lines] = places_of (captions, marks, total)
  starts = zeros (1, numel (captions));
  lines = starts;
  taken = zeros (1, numel (captions));  % the columns of each line that are taken
  for k = 1:numel (captions)
    width = size (captions{k}, 2);
    starts(k) = max (1, min (marks(k) - floor (width / 2), total - width + 1));
    lines(k) = find (taken < starts(k), 1);
    taken(lines(k)) = starts(k) + width;
  end
end

function picture = with_text (picture, mask, row, column)
  [rows, columns] = size (mask);
  picture(row+(1:rows),column+(0:columns-1)) = 255 * uint8 (~mask);
end

% Straight lines from point to point, 2 * HALF + 1 pixels thick.
function picture = with_line (picture, rows, columns, half, grey)
  for k = 1:numel (rows) - 1
    n = 2 + max (abs ([diff(rows(k:k+1)), diff(columns(k:k+1))]));
    row = round (linspace (rows(k), rows(k+1), n));
    column = round (linspace (columns(k), columns(k+1), n));
    for down = -half:half
      for right = -half:half
        picture(sub2ind (size (picture), row + down, column + right)) = grey;
      end
    end
  end
end

%!function [rows, columns] = squares_in (picture)
%!  [rows, columns] = find (conv2 (double (picture == 0), ones (7), 'same') == 49);
%!endfunction

%!function [top, bottom, left, right] = frame_of (picture)
%!  grey = picture ~= 255;  % the frame is drawn over in part
%!  lines = find (sum (grey, 2) >= 600);
%!  columns = find (all (grey(lines(1):lines(end),:), 1));
%!  top = lines(1); bottom = lines(end); left = columns(1); right = columns(end);
%!endfunction

%!test <*thresholds are squares on the curve, over an even axis and a logarithmic one>
%! X = 0:10;
%! L = [0 2 5 6.5 10];
%! Y = X .^ 2;
%! for axis = {@(x) x, @(x) 2 .^ x; [0 4 25 42.5 100], [0 4 25 42.5 100]}
%!   at = axis{1}(L);
%!   picture = attribute_profile_curve_picture (axis{1}(X), Y, at);
%!   [rows, columns] = squares_in (picture);
%!   [top, bottom, left, right] = frame_of (picture);
%!   assert (columns', left + L / 10 * (right - left), 0.5 + 1e-9);
%!   assert (rows', bottom + axis{2} / 100 * (top - bottom), 0.5 + 1e-9);
%! endfor

%!test <*the curve runs through its points>
%! Y = [0 3 3 40 51 51 90 100];
%! picture = attribute_profile_curve_picture (1:8, Y);
%! [top, bottom, left, right] = frame_of (picture);
%! for k = 2:7
%!   row = round (bottom + Y(k) / 100 * (top - bottom));
%!   assert (picture(row, round (left + (k-1) / 7 * (right - left))), uint8 (0));
%! endfor

%!test <*captions leave each other legible and are not cut>
%! X = 1:1000;
%! L = [1 2 3 4 500 999.5 999.75 1000];
%! ink = @(picture) sum (sum (picture(1:frame_of (picture)-4,:) == 0));  % above the squares
%! alone = arrayfun (@(threshold) ink (attribute_profile_curve_picture (X, X, threshold)), L);
%! assert (ink (attribute_profile_curve_picture (X, X, L)), sum (alone));
%! assert (alone > 0, true (1, 8));

%!test <*a curve may be level at 0 and have columns for rows>
%! picture = attribute_profile_curve_picture ([1 2 4], [0 0 0], 2);
%! assert (attribute_profile_curve_picture ([1; 2; 4], [0; 0; 0], 2), picture);

%!error <X has to be> attribute_profile_curve_picture (3, 0, [])
%!error <X has to be> attribute_profile_curve_picture ([1 2 2], [0 1 2], [])
%!error <Y has to be> attribute_profile_curve_picture ([1 2 3], [0 1], [])
%!error <Y has to be> attribute_profile_curve_picture ([1 2 3], [0 1 NaN], [])
%!error <L has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], [2 4])
%!error <L has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], [2 1])
