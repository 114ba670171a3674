function [L, X, Y] = attribute_profile_thresholds (varargin)
%ATTRIBUTE_PROFILE_THRESHOLDS  Thresholds for a profile, chosen from the picture.
%
%   L = attribute_profile_thresholds (I, A, N)
%   L = attribute_profile_thresholds (I, A, N, C, F)
%   L = attribute_profile_thresholds (..., [LOW HIGH])
%   [L, X, Y] = attribute_profile_thresholds (...)
%
%   Chooses thresholds where the picture changes its behaviour: at the sizes,
%   shapes or spreads that its regions have.
%
%   Input
%
%   I        the image, as in attribute_profile.
%   A, C, F  attribute, connectivity and filtering rule, as in attribute_profile,
%            with the same defaults.  A rule that is given is not printed.
%   N        the number of thresholds, a whole number of at least 1.
%   [LOW HIGH]  as the last input: the thresholds are more than LOW and at most
%            HIGH, in the unit of the attribute.  LOW is at least 1 for area and
%            diagonal, at least 0 for the others.  Without it the picture gives
%            the range.
%
%   Output
%
%   L  the thresholds, 1 x N, of class double, increasing, without repeats; for
%      the area whole numbers.  L has fewer than N where the curve rises fewer times.
%   X  1 x n, up to 60 thresholds over the range: evenly spaced for the standard
%      deviation, evenly in the logarithm for the others (inertia below 1/6, in a
%      range that you give: evenly); for the area whole numbers, each once.
%   Y  1 x n, the granulometric curve of I: how much of the picture each
%      threshold of X removes, in grey levels.  Y(k) is the sum of |I - plane|
%      over all pixels of both planes of X(k), the dark and the bright one.  It
%      never falls.
%
%   The range
%
%   X begins with the last threshold that removes nothing; for the standard
%   deviation with HIGH / 60, because regions of one value have 0 and go at once;
%   for the inertia not below 1/6, that of a square, because what has less is
%   compact.  It ends, at HIGH, with the last threshold by which one of the two
%   planes keeps a tenth of the standard deviation of I; for the area with a tenth
%   of the pixels, for the diagonal with a third of the picture's own, if that is
%   less.  Both ends are searched in two steps, to about a thousandth of what is
%   searched.
%
%   How L is chosen
%
%   N thresholds cut the curve into N + 1 levels and make a staircase of it: each
%   level is the mean of its points, and each threshold is the first point of the
%   next level.  L are those thresholds, out of all choices, for which the
%   staircase has the least sum of squared errors at the points of the curve: for
%   sqrt (Y), so that small things count beside large ones.  The choice is found
%   by dynamic programming.  Where the curve rises at fewer than N of its points, L
%   is all of these.
%
%   Regions of k sizes make k steps in the curve: k thresholds tell them apart if
%   a point of the curve lies between each two sizes.
%
%   Cost
%
%   The curve takes 60 thresholds, and up to 180 more find its range, if you do not
%   give it.  One call of attribute_profile gives all planes of 60 if they take up
%   to 512 MB, which is 4 million pixels of uint8.  If they take more, it is one call
%   for every 4 thresholds, so that no more than 9 planes are held at a time (Octave
%   holds the result of a call twice while it returns).
%
%   Errors
%
%   A flat image is an error, and so is a range in which nothing changes.  That
%   happens in images of few pixels or few regions; give [LOW HIGH] then.  So is
%   an N or a range that is not as above.  Wrong inputs of attribute_profile have
%   its messages.
%
%   Example
%
%     I = zeros (64, 64, 'uint8');
%     I(4:7,[4:7, 12:15]) = 80;  I(20:27,10:17) = 80;  I(40:55,20:35) = 80;
%     [L, X, Y] = attribute_profile_thresholds (I, 'area', 3);    % squares of 16, 64, 256 pixels
%     AP = attribute_profile (I, 'area', L);
%     picture = attribute_profile_curve_picture (X, Y, L, 'area');
%     imwrite (picture, fullfile (tempdir, 'curve.png'));
%     L = attribute_profile_thresholds (I, 'area', 3, [1 100]);   % of the small squares only
%
%   See also attribute_profile, attribute_profile_curve_picture,
%   attribute_profile_montage

% SPDX-License-Identifier: MIT

  [I, A, N, C, F, range] = inputs_of (varargin);
  [position, threshold, bounds] = axis_of (I, A);
  if isempty (range)
    if all (I(:) == I(1))
      error ('attribute_profile_thresholds: the image is flat');
    end
    range = range_of (I, A, C, F, @(ends) spread_over (ends, position, threshold, A), bounds);
  end
  X = spread_over (range, position, threshold, A);
  Y = curve_at (I, A, X, C, F);
  if Y(1) == Y(end)
    error (['attribute_profile_thresholds: from %.4g to %.4g there is nothing to choose for ''%s''; ' ...
            'give another range [LOW HIGH] as the last input'], range, A);
  end
  L = X(rises (sqrt (Y), N));
end

function [I, A, N, C, F, range] = inputs_of (inputs)
  inputs = with_char (inputs);
  if numel (inputs) < 3
    error ('attribute_profile_thresholds: give an image, an attribute and the number of thresholds');
  end
  range = [];
  if numel (inputs) > 3 && isnumeric (inputs{end}) && numel (inputs{end}) == 2
    range = double (inputs{end}(:)');
    inputs(end) = [];
  elseif numel (inputs) > 5
    error ('attribute_profile_thresholds: the last of %d inputs has to be a range [LOW HIGH]', numel (inputs));
  end
  inputs(end+1:5) = {[]};
  [I, A, N, C, F] = inputs{:};
  if ~isnumeric (N) || ~isscalar (N) || ~isreal (N) || ~(N >= 1 && N < Inf && N == floor (N))
    error ('attribute_profile_thresholds: N has to be a whole number of at least 1');
  end
  profile_of (I(1:min (end, 1)), A, 1, C, F);  % wrong inputs fail here, before the work begins
  lowest = any (A(1) == 'ad');
  if ~isempty (range) && ~(isreal (range) && all (isfinite (range)) && diff (range) > 0 && range(1) >= lowest)
    error (['attribute_profile_thresholds: the range [LOW HIGH] has to be increasing, with LOW at least 1 for area ' ...
            'and diagonal, at least 0 for inertia and std']);
  end
end

% Thresholds are spaced evenly in POSITION, whose inverse is THRESHOLD. BOUNDS are the least and the greatest one that
% can be of use in I.
function [position, threshold, bounds] = axis_of (I, A)
  sides = [size(I, 1), size(I, 2)];
  position = @log;
  threshold = @exp;
  switch A(1)
    case 'a'
      bounds = [1, max(1, floor (prod (sides) / 10))];
    case 'd'
      bounds = [sqrt(2), max(sqrt (2), norm (sides) / 3)];
    case 'i'
      % A straight line up to the square and the logarithm from there, with one slope where they meet.
      square = 1 / 6;
      position = @(x) min (x / square, 1) + log (max (x / square, 1));
      threshold = @(p) square * min (p, 1) .* exp (max (p - 1, 0));
      % n pixels reach over n rows or columns at most: their mean square distance, over n, is less than this.
      bounds = [square, sum(sides .^ 2) / (2 * max (sides))];
    otherwise
      position = @(x) x;
      threshold = @(p) p;
      bounds = [0, (double (max (I(:))) - double (min (I(:)))) / 2];  % half of the pixels at either end
  end
end

function X = spread_over (ends, position, threshold, A)
  p = position (ends);
  X = threshold (linspace (p(1), p(2), 60));
  X([1 end]) = ends;  % without rounding
  if A(1) == 'a'
    X = round (X);
  end
  X = unique (X);
end

% The curve over all that can be of use shows between which two of its thresholds each end lies; the curve between those
% shows where.
function range = range_of (I, A, C, F, spread_over, bounds)
  X = spread_over (bounds);
  [Y, kept] = curve_at (I, A, X, C, F);
  bracket = @(k) X([k, min(k + 1, end)]);
  fine = [spread_over(bracket (last (Y == Y(1)))), spread_over(bracket (last (kept)))];
  [Y_fine, kept_fine] = curve_at (I, A, fine, C, F);
  range = [max([X(1), fine(Y_fine == Y(1))]), max([X(1), fine(kept_fine)])];
  range = min (range, bounds(2));  % what rounding adds
  range(2) = max (range);
  if A(1) == 's'
    range(1) = range(2) / 60;
  end
end

function k = last (flags)
  k = max ([1, find(flags)]);
end

% The curve at the thresholds X, in as many calls as memory asks for, and for which of them one of the two planes keeps
% a tenth of the standard deviation of I.
function [Y, kept] = curve_at (I, A, X, C, F)
  bits = str2double (regexp (class (I), '\d+', 'match', 'once'));
  step = numel (X);
  if (2 * step + 1) * numel (I) * bits / 8 > 2^29
    step = 4;
  end
  Y = zeros (size (X));
  kept = false (size (X));
  for first = 1:step:numel (X)
    part = first:min (first + step - 1, numel (X));
    [sums, squares] = sums_of (profile_of (I, A, X(part), C, F), min (I(:)));
    n = numel (part);
    Y(part) = (sums(n:-1:1) - sums(n+1)) + (sums(n+1) - sums(n+2:end));
    variance = squares / numel (I) - (sums / numel (I)) .^ 2;
    kept(part) = max (variance(n:-1:1), variance(n+2:end)) >= variance(n+1) / 100;
  end
end

function AP = profile_of (I, A, L, C, F) %#ok<INUSD>
  evalc ('AP = attribute_profile (I, A, L, C, F);');  % without the line that tells the rule
end

% For each plane the sum of its values above LOWEST, and that of their squares. In blocks of pixels: doubles of all
% planes would need up to eight times as much memory as they.
function [sums, squares] = sums_of (AP, lowest)
  planes = reshape (AP, [], size (AP, 3));
  sums = zeros (1, size (AP, 3));
  squares = sums;
  block = 2^12;
  for first = 1:block:size (planes, 1)
    values = double (unsigned (planes(first:min (first + block - 1, end),:)) - unsigned (lowest));
    sums = sums + sum (values, 1);
    squares = squares + sum (values .^ 2, 1);
  end
end

% The values shifted to begin at 0: integer arithmetic of the hosts saturates, and a difference of signed values can be
% greater than their class holds.
function values = unsigned (values)
  if intmin (class (values)) < 0
    name = ['u' class(values)];
    lowest = intmax (name) - cast (intmax (class (values)), name);  % the sign bit
    values = reshape (bitxor (typecast (values(:), name), lowest), size (values));
  end
end

% The places of the points, at most N, at which the staircase nearest to the curve y rises. COST(i,j) is the squared
% error of the points i to j about their mean, and least(j) that of the best staircase over the points 1 to j. The means
% run along: they keep an error of 0 exact on a level, whatever the size of y.
function places = rises (y, N)
  n = numel (y);
  cost = Inf (n);
  centre = y;
  squares = zeros (1, n);
  for j = 1:n
    count = j:-1:1;
    difference = y(j) - centre(1:j);
    centre(1:j) = centre(1:j) + difference ./ count;
    squares(1:j) = squares(1:j) + difference .^ 2 .* ((count - 1) ./ count);
    cost(1:j,j) = squares(1:j);
  end
  least = cost(1,:);
  first = zeros (0, n);  % of the last level, for each number of rises
  while size (first, 1) < N && least(n) > 0
    [least, last_level] = min (least(1:n-1)' + cost(2:n,:), [], 1);
    first(end+1,:) = last_level + 1;
  end
  places = zeros (1, size (first, 1));
  last = n;
  for k = numel (places):-1:1
    places(k) = first(k,last);
    last = places(k) - 1;
  end
end

%!function image = random_image (rows, columns, name)
%!  image = cast (filter2 (ones (3), floor (20 * rand (rows + 2, columns + 2)), 'valid'), name);
%!endfunction

%!function [removed, spread] = curve_of (I, A, X, varargin)
%!  evalc ('AP = attribute_profile (I, A, X, varargin{:});');
%!  removed = squeeze (sum (sum (abs (double (AP) - double (I)), 1), 2))';
%!  removed = removed(numel (X):-1:1) + removed(numel (X)+2:end);
%!  spread = std (double (reshape (AP, numel (I), [])), 0, 1);
%!  spread = max (spread(numel (X):-1:1), spread(numel (X)+2:end)) / spread(numel (X)+1);
%!endfunction

%!function squared_error = error_of (y, places)
%!  level = 1 + sum ((1:numel (y)) >= places', 1);
%!  means = accumarray (level', y', [], @mean);
%!  squared_error = sumsq (means(level)' - y) / y(end)^2;
%!endfunction

%!function check_against_all_choices (I, A, N, range)
%!  [L, X, Y] = attribute_profile_thresholds (I, A, N, range);
%!  [found, places] = ismember (L, X(2:end));
%!  assert (all (found) && all (diff (L) > 0));
%!  choices = nchoosek (2:numel (X), min (N, numel (X) - 1));
%!  errors = arrayfun (@(k) error_of (sqrt (Y), choices(k,:)), 1:rows (choices));
%!  assert (error_of (sqrt (Y), places + 1), min (errors), 1e-12);
%!  assert (numel (L), min (N, numel (unique (Y)) - 1));
%!endfunction

%!shared seed
%! seed = floor (1e6 * rand ());
%! printf ('attribute_profile_thresholds: seed %d\n', seed);
%! rand ('twister', seed);

%!test <*the choice is the best of all choices>
%! for N = [1:4, 1:4]
%!   check_against_all_choices (random_image (3, 4, 'uint8'), 'area', N, [1 12]);
%! endfor
%! for A = {'diagonal', 'inertia', 'std'; [1.4 9], [0.2 0.5], [0 9]}
%!   check_against_all_choices (random_image (9, 11, 'int16'), A{1}, 2, A{2});
%! endfor

%!test <*the curve is that of the profile, silent, never falls, and runs over the range>
%! for column = {'area', 'diagonal', 'inertia', 'std'; 60, norm([20 30]) / 3, Inf, Inf}
%!   [A, cap] = column{:};
%!   I = random_image (20, 30, 'int16');
%!   for rule = {'min', 'max', 'direct', 'sub', []}
%!     printed = evalc ("[L, X, Y] = attribute_profile_thresholds (I, A, 3, 8, rule{1});");
%!     [removed, spread] = curve_of (I, A, X, 8, rule{1});
%!     assert ({printed, size(L), Y}, {'', [1, min(3, numel (unique (Y)) - 1)], removed});
%!     assert (all (diff (Y) >= 0) && spread(end) >= 0.1 && X(end) <= cap);
%!   endfor
%!   even = logspace (log10 (X(1)), log10 (X(end)), 60);
%!   expected = {unique(round (even)), even, even, X(end) * (1:60) / 60};
%!   assert (X, expected{A(1) == 'adis'}, -1e-9);
%!   assert (A(1) != 'i' || (X(1) >= 1/6 && X(1) < 0.18));
%!   [~, spread] = curve_of (I, A, X(end) * 1.05, 8);
%!   assert (spread < 0.1 || X(end) > 0.95 * cap);
%! endfor
%! I = repelem (random_image (10, 12, 'uint8'), 3, 3);
%! [~, X] = attribute_profile_thresholds (I, 'area', 1);
%! [~, x] = attribute_profile_thresholds (I, 'diagonal', 1);
%! assert ([X(1), x(1)], [9, sqrt(18)], 0.02);

%!test <*squares of k sizes are told apart by k thresholds and more>
%! for k = 2:6
%!   sizes = round ((2 + 2 * rand ()) * (1.5 + 0.3 * rand ()) .^ (0:k-1));
%!   I = zeros (90 * k, 300, 'uint8');
%!   for b = 1:k
%!     step = sizes(b) + 2;
%!     across = step * randi (floor (300 / step));
%!     I((b-1)*90+(1:90),1:across) = 100 * ((mod (0:89, step) < sizes(b) & 0:89 < step * floor (90 / step))' ...
%!                                          & mod (0:across-1, step) < sizes(b));
%!   endfor
%!   for A = {'area', 'diagonal'; sizes .^ 2, sizes * sqrt(2)}
%!     for N = [k, k+1, 2*k-1]
%!       L = attribute_profile_thresholds (I, A{1}, N);
%!       for b = 1:k-1
%!         assert (any (L > A{2}(b) & L <= A{2}(b+1)));
%!       endfor
%!     endfor
%!   endfor
%! endfor

%!test <*compact and elongated shapes are told apart beside a very long one>
%! I = zeros (400, 400, 'uint8');
%! I(10,5:395) = 100;  % inertia 33
%! I([20:31, 60:71, 90:101],[10:21, 50:61, 90:101]) = 100;  % 0.17
%! I([150:154, 170:174],[10:34, 50:74, 90:114]) = 100;  % 0.43
%! L = attribute_profile_thresholds (I, 'inertia', 3);
%! assert (any (L > 0.17 & L < 0.43) && any (L > 0.43 & L < 33));

%!test <*a range is kept>
%! I = random_image (20, 30, 'uint8');
%! for A = {'area', 'diagonal', 'inertia', 'std'; [2 50], [1.5 20], [0 0.5], [1 20]}
%!   [L, X, Y] = attribute_profile_thresholds (I, A{1}, 2, single (A{2}'));
%!   assert (X([1 end]), A{2}, -1e-7);
%!   assert ({Y, all(L > X(1) & L <= X(end))}, {curve_of(I, A{1}, X), true});
%! endfor
%! for bad = {[0.5 9], [9 2], [3 3], [2 Inf], [2 9i], [NaN 4]}
%!   fail ("attribute_profile_thresholds (I, 'area', 3, bad{1})", 'the range \[LOW HIGH\] has to be');
%! endfor
%! fail ("attribute_profile_thresholds (I, 'std', 3, [-1 4])", 'at least 0 for inertia');
%! fail ("attribute_profile_thresholds (I, 'std', 3, 4, 'min', 7)", 'the last of 6 inputs');
%! fail ("attribute_profile_thresholds (I, 'std', 3, [1e300 1.7e308])", 'from 1e\+300 to 1.7e\+308 there is nothing');

%!test <*the complement and the transpose have the same areas, twice the levels have twice the deviation>
%! names = {'uint8', 'int8', 'uint16', 'int16', 'uint32', 'int32', 'uint64', 'int64'};
%! I = bitand (random_image (20, 30, 'uint8'), 63) + 64 * uint8 (rand (20, 30) > 0.5);
%! I = I - min (I(:));
%! [L, X, Y] = attribute_profile_thresholds (I, 'area', 4);
%! for name = names
%!   low = intmin (name{1}) + cast (I, name{1});
%!   high = intmax (name{1}) - cast (I, name{1});
%!   for image = {low, high'}
%!     clear found
%!     [found{1:3}] = attribute_profile_thresholds (image{1}, 'area', 4);
%!     assert (found, {L, X, Y});
%!   endfor
%! endfor
%! for name = names(3:end)
%!   assert (attribute_profile_thresholds (2 * cast (I, name{1}), 'area', 3), ...
%!           attribute_profile_thresholds (I, 'area', 3));
%!   assert (attribute_profile_thresholds (2 * cast (I, name{1}), 'std', 3), ...
%!           2 * attribute_profile_thresholds (cast (I, name{1}), 'std', 3));
%! endfor

%!test <*the greatest contrast of a class counts in full>
%! I = random_image (12, 12, 'uint8') > 90;
%! [L, X, Y] = attribute_profile_thresholds (uint8 (I), 'area', 3, [1 40]);
%! for name = {'uint8', 'int8', 'int16', 'int32', 'uint64', 'int64'}
%!   ends = [intmin(name{1}), intmax(name{1})];
%!   [stretched{1:3}] = attribute_profile_thresholds (ends(I + 1), 'area', 3, [1 40]);
%!   assert (stretched{2}, X);
%!   assert (stretched{3}, Y * (double (ends(2)) - double (ends(1))), -1e-12);
%! endfor

%!test <*in pieces the curve is the same, and few planes are held>
%! I = random_image (900, 900, 'uint8');
%! high_water = @() str2double (regexp (fileread ('/proc/self/status'), 'VmHWM:\s*(\d+)', 'tokens'){1}{1});
%! [whole{1:3}] = attribute_profile_thresholds (I, 'area', 3);
%! before = high_water ();
%! [pieces{1:3}] = attribute_profile_thresholds (uint64 (I), 'area', 3);
%! assert (pieces, whole);
%! % 9 planes of 6.5 MB, twice, and the trees; the planes of one call would be 650 MB, twice.
%! assert (high_water () - before < 250e3);

%!test <*fewer thresholds where the curve rises fewer times>
%! I = uint8 ([1 0 1 1 0 1 1 1]);
%! [L, X] = attribute_profile_thresholds (I, 'area', 9, [1 3]);
%! assert ({L, X}, {2:3, 1:3});
%! [L, ~, Y] = attribute_profile_thresholds (uint8 ([1 0 5 5 5 5 0 1]), 'diagonal', 9, [1.4 8]);
%! assert (numel (L), numel (unique (Y)) - 1);

%!error <the image is flat> attribute_profile_thresholds (7 * ones (3, 'int8'), 'area', 3)
%!error <from 1 to 1 there is nothing to choose for 'a'> attribute_profile_thresholds (uint8 (magic (4)), 'a', 3)
%!error <from 1 to 1.4 there is nothing> attribute_profile_thresholds (uint8 (magic (9)), 'area', 3, [1 1.4])
%!error <nothing to choose for 's'> attribute_profile_thresholds (uint8 ([1 0]), 's', 3)
%!error <nothing to choose for 'd'> attribute_profile_thresholds (uint8 ([1 0]), 'd', 3)
%!error <give an image, an attribute and> attribute_profile_thresholds (uint8 (magic (4)), 'area')
%!test <*N is a whole number, and the inputs are those of a profile>
%! I = uint8 (magic (4));
%! for N = {0, 2.5, NaN, Inf, [1 2], 'x', {}, 3+2i}
%!   fail ("attribute_profile_thresholds (I, 'area', N{1})", 'N has to be');
%! endfor
%! fail ("attribute_profile_thresholds (double (I), 'area', 3)", 'Data type not supported');
%! fail ("attribute_profile_thresholds (cat (3, I, I), 'area', 3)", 'more than two dimensions');
%! fail ("attribute_profile_thresholds ([], 'area', 3)", 'numeric 1D or 2D');
%! fail ("attribute_profile_thresholds (I, 'perimeter', 3)", 'Attribute not supported');
%! fail ("attribute_profile_thresholds (I, 'area', 3, 5)", 'connectivity');
%! fail ("attribute_profile_thresholds (I, 'area', 3, 4, 'most')", 'filtering rule must be');
