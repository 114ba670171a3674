function picture = attribute_profile_curve_picture (X, Y, L, A)
%ATTRIBUTE_PROFILE_CURVE_PICTURE  A granulometric curve and its thresholds in one picture.
%
%   picture = attribute_profile_curve_picture (X, Y)
%   picture = attribute_profile_curve_picture (X, Y, L)
%   picture = attribute_profile_curve_picture (X, Y, L, A)
%
%   Draws what attribute_profile_thresholds returns: the curve in black, its
%   thresholds as squares with their numbers above, and in grey the staircase that
%   they make of it.  Needs no display.
%
%   Input
%
%   X  the thresholds of the curve, 1 x n, increasing, n at least 2.
%   Y  how much each of them removes, 1 x n, in grey levels, 0 or more.
%   L  the chosen thresholds, 1 x N, increasing, from X(1) to X(n).  Those that
%      are not in X are drawn where they lie on the curve.  Without L, or for [],
%      the curve alone is drawn.
%   A  the attribute, as in attribute_profile: it names the axis of X.  Without A,
%      or for [], that is the threshold.
%
%   Output
%
%   picture  a matrix of class uint8 for imshow and imwrite, more than 600 columns
%            wide.  X runs to the right from X(1) to X(n): even if the X are
%            evenly spaced or X(1) is not positive, logarithmic otherwise.  Upwards
%            runs the square root of Y, which is what thresholds are fitted to,
%            from 0 to the greatest.  Values of X and Y stand at the axes.
%
%   Errors
%
%   Inputs that are not as above are errors.
%
%   Example
%
%     I = uint8 (28 * magic (16));
%     [L, X, Y] = attribute_profile_thresholds (I, 'area', 3);
%     picture = attribute_profile_curve_picture (X, Y, L, 'area');
%     imwrite (picture, fullfile (tempdir, 'curve.png'));
%
%   See also attribute_profile_thresholds, attribute_profile_montage, imwrite

% SPDX-License-Identifier: MIT

  if nargin < 2
    error ('attribute_profile_curve_picture: give the thresholds X and what they remove, Y');
  end
  if nargin < 3
    L = [];
  end
  if nargin < 4
    A = [];
  end
  if ~is_increasing (X) || numel (X) < 2
    error ('attribute_profile_curve_picture: X has to be increasing numbers, two at least');
  end
  if ~isnumeric (Y) || ~isreal (Y) || numel (Y) ~= numel (X) || ~all (Y(:) >= 0 & Y(:) < Inf)
    error ('attribute_profile_curve_picture: Y has to be as many numbers as X, 0 or more');
  end
  if ~is_increasing (L) || any (L < X(1)) || any (L > X(end))
    error ('attribute_profile_curve_picture: L has to be increasing numbers from X(1) to X(end)');
  end
  name = axis_name (A);
  X = double (X(:)');
  Y = double (Y(:)');
  L = double (L(:)');

  logarithmic = X(1) > 0 && ~is_even (X);
  if logarithmic
    across = @(x) (log (x) - log (X(1))) / (log (X(end)) - log (X(1)));
  else
    across = @(x) (x / 2 - X(1) / 2) / (X(end) / 2 - X(1) / 2);  % halves: a difference can be too large for a double
  end
  highest = max (Y);
  up = @(y) sqrt (y / max ([highest, realmin]));

  x_ticks = ticks (X(1), X(end), logarithmic);
  y_ticks = root_ticks (highest);
  y_captions = captions_of (y_ticks);
  size_of = struct ('width', 600, 'height', 300, 'margin', 8, 'line', 22);  % a margin is more than a pen is wide
  left = size_of.line + 2 * size_of.margin + max (widths_of (y_captions));
  total = left + size_of.width + size_of.margin;
  column = @(x) left + 1 + round (across (x) * (size_of.width - 1));
  captions = captions_of (L);
  starts = starts_of (captions, column (L), left + 1, total);
  lines = lines_of (captions, starts);
  top = size_of.margin + size_of.line * max ([lines, 1]);
  bottom = top + size_of.height;
  row = @(part) bottom - round ((size_of.height - 1) * part);

  picture = repmat (uint8 (255), bottom + size_of.margin + 2 * size_of.line, total);
  for k = 1:numel (L)
    picture(top+1-size_of.line*lines(k):bottom,column(L(k))) = 160;
  end
  picture([top+1 bottom],left+(1:size_of.width)) = 160;
  picture(top+1:bottom,left+[1 size_of.width]) = 160;
  picture = with_x_ticks (picture, captions_of (x_ticks), column (x_ticks), bottom, size_of.margin);
  picture = with_y_ticks (picture, y_captions, row (up (y_ticks)), left, size_of.margin);
  mask = large_text (name);
  picture = with_text (picture, mask, bottom + size_of.margin + size_of.line, ...
                       left + floor ((size_of.width - size (mask, 2)) / 2));
  mask = rot90 (large_text ('grey levels removed'));
  picture = with_text (picture, mask, top + floor ((size_of.height - size (mask, 1)) / 2), 1);

  heights = interp1 (across (X), up (Y), across (L));
  if ~isempty (L)
    levels = repelem (levels_of (X, up (Y), L, heights), 2);
    picture = with_line (picture, row (levels), column ([X(1), repelem(L, 2), X(end)]), 1, 160);
  end
  picture = with_line (picture, row (up (Y)), column (X), 0, 0);
  for k = 1:numel (L)
    picture(row (heights(k))+(-3:3),column (L(k))+(-3:3)) = 0;
    picture = with_text (picture, captions{k}, top - size_of.line * lines(k), starts(k));
  end
end

% The means of the values between the thresholds L. A level without points is as high as the curve at its threshold.
function levels = levels_of (X, values, L, heights)
  levels = [values(1), heights];
  edges = [-Inf, L, Inf];
  for k = 1:numel (levels)
    inside = X >= edges(k) & X < edges(k+1);
    if any (inside)
      levels(k) = mean (values(inside));
    end
  end
end

function picture = with_x_ticks (picture, captions, columns, bottom, margin)
  starts = starts_of (captions, columns, 1, size (picture, 2));
  for k = find (legible (starts, starts + widths_of (captions)))
    picture(bottom+(1:4),columns(k)) = 160;
    picture = with_text (picture, captions{k}, bottom + margin, starts(k));
  end
end

function picture = with_y_ticks (picture, captions, rows, left, margin)
  for k = find (legible (rows - 9, rows + 9))
    picture(rows(k),left-(0:3)) = 160;
    picture = with_text (picture, captions{k}, rows(k) - 9, left - margin + 1 - size (captions{k}, 2));
  end
end

function valid = is_increasing (values)
  valid = isnumeric (values) && isreal (values) && all (isfinite (values(:))) && all (diff (double (values(:))) > 0);
end

function even = is_even (X)
  steps = diff (X / 2);
  even = max (steps) - min (steps) <= 1e-6 * max (steps);
end

function name = axis_name (A)
  names = with_char ({A});
  known = struct ('a', 'area in pixels', 'd', 'diagonal in pixels', 'i', 'inertia', 's', 'std in grey levels');
  if isempty (A)
    name = 'threshold';
  elseif ischar (names{1}) && any (strcmp (names{1}, {'a', 'area', 'd', 'diagonal', 'i', 'inertia', 's', 'std'}))
    name = known.(names{1}(1));
  else
    error ('attribute_profile_curve_picture: A has to be an attribute of attribute_profile');
  end
end

% Values for the axis of X: its ends, and round ones between.
function values = ticks (low, high, logarithmic)
  if ~logarithmic
    power = 10 ^ floor (log10 (high / 5 - low / 5));
    steps = power * [1 2 5 10];
    step = steps(find (steps >= high / 6 - low / 6, 1));
    rounds = step * (ceil (low / step):floor (high / step));
  else
    powers = 10 .^ (floor (log10 (low)):floor (log10 (high)));
    rounds = [powers, 2 * powers, 5 * powers];
    if numel (powers) > 3
      rounds = powers;
    end
  end
  values = [low, high, rounds(rounds > low & rounds < high)];
end

% Values for the axis of Y: its ends, and round ones of the two upper powers of ten.
function values = root_ticks (high)
  powers = 10 .^ (floor (log10 (max (high, realmin))) - [0 1]);
  rounds = [5 * powers, 2 * powers, powers];
  values = [0, high(high > 0), rounds(rounds < high)];
end

% Which of the captions, from pixel FIRST to LAST each, are shown: those that leave the ones before them legible.
function shown = legible (first, last)
  shown = false (size (first));
  for k = 1:numel (first)
    shown(k) = all (last(k) + 6 < first(shown) | last(shown) + 6 < first(k));
  end
end

function masks = captions_of (values)
  masks = cellfun (@(value) large_text (number_text (value)), num2cell (values), 'UniformOutput', false);
end

function mask = large_text (text)
  mask = repelem (caption_text (text), 2, 2);
end

function width = widths_of (masks)
  width = cellfun (@(mask) size (mask, 2), masks);
end

% The first column of each caption, centred at its mark but between the columns FIRST and LAST.
function starts = starts_of (captions, marks, first, last)
  widths = widths_of (captions);
  starts = max (first, min (marks - floor (widths / 2), last - widths + 1));
end

% The line of each caption, counted upwards from 1: the lowest one in which it leaves the captions before it legible.
function lines = lines_of (captions, starts)
  lines = zeros (1, numel (captions));
  taken = zeros (1, numel (captions));  % the columns of each line that are taken
  for k = 1:numel (captions)
    lines(k) = find (taken < starts(k), 1);
    taken(lines(k)) = starts(k) + size (captions{k}, 2) + 5;
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

%!function ink = ink_above (picture)  % the squares
%!  [top, ~, left] = frame_of (picture);
%!  ink = sum (sum (picture(1:top-4,left:end) == 0));
%!endfunction

%!test <*thresholds are squares on the curve, over an even axis and a logarithmic one>
%! X = 0:10;
%! L = [0 2 5 6.5 10];
%! Y = X .^ 2;
%! for axis = {@(x) x, @(x) 2 .^ x; [0 4 25 42.25 100], [0 4 25 42.25 100]}
%!   at = axis{1}(L);
%!   picture = attribute_profile_curve_picture (axis{1}(X), Y, at);
%!   [rows, columns] = squares_in (picture);
%!   [top, bottom, left, right] = frame_of (picture);
%!   assert (columns', left + L / 10 * (right - left), 0.5 + 1e-9);
%!   assert (rows', bottom + sqrt (axis{2} / 100) * (top - bottom), 0.5 + 1e-9);
%! endfor

%!test <*captions leave each other legible and are not cut>
%! X = 1:1000;
%! L = [1 2 3 4 500 999.5 999.75 1000];
%! alone = arrayfun (@(threshold) ink_above (attribute_profile_curve_picture (X, X, threshold)), L);
%! assert (ink_above (attribute_profile_curve_picture (X, X, L)), sum (alone));
%! assert (alone > 0, true (1, 8));

%!test <*a curve may be level at 0 and have columns for rows>
%! picture = attribute_profile_curve_picture ([1 2 4], [0 0 0], 2);
%! assert (attribute_profile_curve_picture ([1; 2; 4], [0; 0; 0], 2), picture);

%!test <*the ends of double are values like others>
%! X = [-1 0 1] * 1.7e308;
%! picture = attribute_profile_curve_picture (X, [0 0.85e308 1.7e308], 0);
%! [rows, columns] = squares_in (picture);
%! [top, bottom, left, right] = frame_of (picture);
%! assert ([rows, columns], [bottom + sqrt(0.5) * (top - bottom), (left + right) / 2], 1);

%!error <give the thresholds X> attribute_profile_curve_picture (1:3)
%!error <X has to be> attribute_profile_curve_picture ([1 2i], [0 1])
%!error <Y has to be> attribute_profile_curve_picture ([1 2], [0 1i])
%!error <L has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], [1 2i])
%!error <A has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], 2, 'are')
%!error <X has to be> attribute_profile_curve_picture (3, 0, [])
%!error <X has to be> attribute_profile_curve_picture ([1 2 2], [0 1 2], [])
%!error <Y has to be> attribute_profile_curve_picture ([1 2 3], [0 1], [])
%!error <Y has to be> attribute_profile_curve_picture ([1 2 3], [0 1 NaN], [])
%!error <L has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], [2 4])
%!error <L has to be> attribute_profile_curve_picture ([1 2 3], [0 1 2], [2 1])
