function [L, X, Y] = attribute_profile_thresholds (I, A, N, C, F)
%ATTRIBUTE_PROFILE_THRESHOLDS  Thresholds for a profile, chosen from the picture.
%
%   L = attribute_profile_thresholds (I, A, N)
%   [L, X, Y] = attribute_profile_thresholds (I, A, N, C, F)
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
%
%   Output
%
%   L  the thresholds, 1 x N, of class double, increasing, without repeats; for
%      the area whole numbers.  L has fewer than N where fewer do: see below.
%   X  1 x n, some 60 thresholds from the least to the greatest value that the
%      attribute takes in I below the whole image: even in the logarithm for area
%      (in whole numbers, each of them once) and diagonal, even for inertia and
%      standard deviation.
%   Y  1 x n, the granulometric curve of I: how much of the picture each
%      threshold of X removes, in grey levels.  Y(k) is the sum of |I - plane|
%      over all pixels of both planes of X(k), the dark and the bright one.  It
%      never falls.
%
%   How L is chosen
%
%   Joined by straight lines, the first point of the curve, N points between and
%   the last one make a function that is linear piece by piece.  L are those N
%   points, out of all choices, for which this function has the least sum of
%   squared errors at the points of the curve: over log (X) for area and
%   diagonal, over X for the others.  The choice is found by dynamic programming.
%   L has fewer than N thresholds if fewer points lie between the ends of the
%   curve, or if fewer meet it exactly.
%
%   A step of the curve takes two thresholds, one on either side: to tell k kinds
%   of regions apart ask for 2k - 1.  What is removed counts by its volume, pixels
%   times grey levels, so that the largest regions take the last thresholds; those
%   that leave a plane nearly flat can be left out, as in L(L < 5000).
%
%   Y starts at 0, because the least region equals X(1) and stays.  Regions whose
%   inertia or deviation comes out negative or NaN, by rounding or because squares
%   wrap (see attribute_profile), stay at no threshold: then Y starts above 0.
%
%   Cost
%
%   Ten to fifteen calls of attribute_profile with 4 thresholds find the ends of X.
%   One call gives all planes of the curve if they take up to 512 MB, which is 4
%   million pixels of uint8.  If they take more, it is one call for every 4
%   thresholds, so that no more than 9 planes are held at a time (Octave holds the
%   result of a call twice while it returns).
%
%   Errors
%
%   A flat image, an attribute that takes one value in I below the whole image,
%   and areas of two neighbouring whole numbers are errors: they leave nothing
%   to choose from.  So is an N that is not as above.  Wrong inputs of
%   attribute_profile have its messages.
%
%   Example
%
%     I = zeros (64, 64, 'uint8');
%     I(4:7,[4:7, 12:15]) = 80;  I(20:27,10:17) = 80;  I(40:55,20:35) = 80;
%     [L, X, Y] = attribute_profile_thresholds (I, 'area', 5);    % squares of 16, 64, 256 pixels
%     AP = attribute_profile (I, 'area', L);
%     picture = attribute_profile_curve_picture (X, Y, L);
%     imwrite (picture, fullfile (tempdir, 'curve.png'));
%
%   See also attribute_profile, attribute_profile_curve_picture,
%   attribute_profile_montage

% SPDX-License-Identifier: MIT

  if nargin < 4
    C = [];
  end
  if nargin < 5
    F = [];
  end
  if ~isnumeric (N) || ~isscalar (N) || ~(N >= 1 && N < Inf && N == floor (N))
    error ('attribute_profile_thresholds: N has to be a whole number of at least 1');
  end
  profile_of (I(1:min (end, 1)), A, 1, C, F);  % wrong inputs fail here, before the work begins

  points = 60;
  [least, greatest] = attribute_range (I, A, C);
  if any (A(1) == 'ad')
    X = exp (linspace (log (least), log (greatest), points));
    if A(1) == 'a'
      X = round (X);
    end
    X([1 end]) = [least greatest];
    X = unique (X);
    position = log (X);
  else
    X = linspace (least, greatest, points);
    position = X;
  end
  if numel (X) < 3
    error ('attribute_profile_thresholds: attribute ''%s'' takes the values %g and %g only, with none between', ...
           A, least, greatest);
  end
  Y = removed (I, A, X, C, F);
  L = X(breakpoints (position, Y, N));
end

% The least and the greatest value of the attribute below the whole image. By the default rules a plane changes at a
% threshold exactly if the threshold passes the value of some region: under 'sub' each region takes its own height
% along. So the curve starts to rise at the one value and ends to rise at the other, and both are found by search among
% all values that the attribute can have, numbered in their order by KEYS.
function [least, greatest] = attribute_range (I, A, C)
  switch A(1)
    case 'a'
      keys = [1, numel(I)];
      value = @(key) key;
    case 'd'
      keys = [2, sum(size (I) .^ 2) + 1];  % squares of lengths; the box of a region can be the whole image
      value = @(key) sqrt (key);
    otherwise
      keys = [0, double(typecast (single (Inf), 'uint32'))];  % the bits of a positive single grow with its value
      value = @(key) double (typecast (uint32 (key), 'single'));
  end
  ends = removed (I, A, value (keys), C, []);
  if ends(2) == 0
    error ('attribute_profile_thresholds: the image is flat');
  end
  low = keys;   % the rise begins between these two
  high = keys;  % and ends between these
  probes = [keys(1) + 1, between(high, 3)];  % in most pictures some region has the least value possible
  while ~isempty (probes)
    Y = removed (I, A, value (probes), C, []);
    low = narrowed (low, probes, Y > ends(1));
    high = narrowed (high, probes, Y == ends(2));
    if diff (low) > 1 && diff (high) > 1
      probes = [between(low, 2), between(high, 2)];
    else
      probes = [between(low, 4), between(high, 4)];
    end
  end
  least = value (low(1));
  greatest = value (high(1));
  if low(1) >= high(1)
    error ('attribute_profile_thresholds: attribute ''%s'' takes one value only, %g', A, greatest);
  end
end

% At most COUNT whole numbers between the two of BRACKET, evenly.
function numbers = between (bracket, count)
  numbers = round (linspace (bracket(1), bracket(2), count + 2));
  numbers = unique (numbers(numbers > bracket(1) & numbers < bracket(2)));
end

% PASSED is false for the first of the increasing PROBES and true for the others: the change lies in BRACKET.
function bracket = narrowed (bracket, probes, passed)
  bracket = [max([bracket(1), probes(~passed)]), min([bracket(2), probes(passed)])];
end

% The curve at the thresholds X, in as many calls as memory asks for.
function Y = removed (I, A, X, C, F)
  bits = str2double (regexp (class (I), '\d+', 'match', 'once'));
  step = numel (X);
  if (2 * step + 1) * numel (I) * bits / 8 > 2^29
    step = 4;
  end
  Y = zeros (size (X));
  for first = 1:step:numel (X)
    part = first:min (first + step - 1, numel (X));
    Y(part) = differences (profile_of (I, A, X(part), C, F));
  end
end

function AP = profile_of (I, A, L, C, F) %#ok<INUSD>
  evalc ('AP = attribute_profile (I, A, L, C, F);');  % without the line that tells the rule
end

% For each threshold of a profile the sum of its two planes' distances from the input. Summed in blocks of pixels: a
% difference of whole planes would need as much memory as they.
function Y = differences (AP)
  n = (size (AP, 3) - 1) / 2;
  planes = reshape (AP, [], 2 * n + 1);
  Y = zeros (1, n);
  block = 2^14;
  for first = 1:block:size (planes, 1)
    values = unsigned (planes(first:min (first + block - 1, end),:));
    input = values(:,n+1);
    dark = sum (values(:,n:-1:1) - input, 1, 'double');
    bright = sum (input - values(:,n+2:end), 1, 'double');
    Y = Y + (dark + bright);
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

% The places of at most N inner points of the curve (x, y). COST(i,j) is the squared error of the straight line from
% point i to point j at the points between, and least(j) that of the best polyline from the first point to point j.
function places = breakpoints (x, y, N)
  n = numel (x);
  cost = Inf (n);
  for i = 1:n-1
    for j = i+1:n
      inner = i+1:j-1;
      line = y(i) + (x(inner) - x(i)) * ((y(j) - y(i)) / (x(j) - x(i)));
      cost(i,j) = sum ((y(inner) - line) .^ 2);
    end
  end
  exact = n * (1e-9 * (y(n) - y(1))) ^ 2;  % what rounding leaves
  N = min (N, n - 2);
  before = zeros (N, n);
  least = cost(1,:);
  for k = 1:N
    [least, before(k,:)] = min (least' + cost, [], 1);
    if least(n) <= exact
      break
    end
  end
  places = zeros (1, k);
  last = n;
  for k = k:-1:1
    last = before(k,last);
    places(k) = last;
  end
end

%!function image = random_image (rows, columns, name)
%!  image = cast (filter2 (ones (3), floor (20 * rand (rows + 2, columns + 2)), 'valid'), name);
%!endfunction

%!function removed = curve_of (I, A, X, varargin)
%!  evalc ('AP = attribute_profile (I, A, X, varargin{:});');
%!  removed = squeeze (sum (sum (abs (double (AP) - double (I)), 1), 2))';
%!  removed = removed(numel (X):-1:1) + removed(numel (X)+2:end);
%!endfunction

%!function squared_error = error_of (x, Y, places)
%!  knots = [1, places, numel(x)];
%!  squared_error = sumsq (interp1 (x(knots), Y(knots), x) - Y) / Y(end)^2;
%!endfunction

%!function check_against_all_choices (I, A, N)
%!  [L, X, Y] = attribute_profile_thresholds (I, A, N);
%!  x = X;
%!  if any (strcmp (A, {'area', 'diagonal'}))
%!    x = log (X);
%!  end
%!  [found, places] = ismember (L, X(2:end-1));
%!  assert (all (found) && all (diff (L) > 0));
%!  choices = nchoosek (2:numel (X)-1, min (N, numel (X) - 2));
%!  errors = arrayfun (@(k) error_of (x, Y, choices(k,:)), 1:rows (choices));
%!  assert (error_of (x, Y, places + 1), min (errors), 1e-12);
%!  assert (numel (L) == columns (choices) || min (errors) < 1e-12);
%!endfunction

%!shared seed
%! seed = floor (1e6 * rand ());
%! printf ('attribute_profile_thresholds: seed %d\n', seed);
%! rand ('twister', seed);

%!test <*the choice is the best of all choices>
%! for N = [1:4, 1:4]
%!   check_against_all_choices (random_image (3, 4, 'uint8'), 'area', N);
%! endfor
%! for A = {'diagonal', 'inertia', 'std'}
%!   check_against_all_choices (random_image (9, 11, 'int16'), A{1}, 2);
%! endfor

%!test <*the curve is that of the profile, silent, and never falls; by the default rule it rises from end to end>
%! for A = {'area', 'diagonal', 'inertia', 'std'; 1, 1e-6, 1e-6, 1e-6}
%!   I = random_image (20, 30, 'int16');
%!   for rule = {[], 'min', 'max', 'direct', 'sub'}
%!     printed = evalc ("[L, X, Y] = attribute_profile_thresholds (I, A{1}, 3, 8, rule{1});");
%!     assert ({printed, size(L)}, {'', [1 3]});
%!     assert (Y, curve_of (I, A{1}, X, 8, rule{1}));
%!     assert (all (diff (Y) >= 0));
%!   endfor
%!   [~, X, Y] = attribute_profile_thresholds (I, A{1}, 3);
%!   beyond = curve_of (I, A{1}, [0, X([1 end]) + A{2}, numel(I)]);
%!   assert (beyond(1) == Y(1) && beyond(2) > Y(1) && beyond(3) > Y(end) && beyond(3) == beyond(4));
%! endfor

%!test <*three sizes of squares are told apart>
%! I = zeros (128, 128, 'uint8');
%! I([3:5, 8:10, 13:15, 18:20],mod (0:127, 10) < 3) = 100;
%! I(31:38,mod (0:127, 20) < 8) = 100;
%! I(61:84,41:64) = 100;
%! for A = {'area', 'diagonal'; [3 8 24] .^ 2, [3 8 24] * sqrt(2)}
%!   for N = [3 5]  % 5 meet the curve exactly, 3 are enough where no size outweighs the others
%!     L = attribute_profile_thresholds (I, A{1}, N);
%!     assert (any (L > A{2}(1) & L <= A{2}(2)) && any (L > A{2}(2) & L <= A{2}(3)));
%!   endfor
%! endfor
%! [~, X] = attribute_profile_thresholds (I, 'inertia', 3);
%! assert (curve_of (I, 'inertia', X(1) + [0 1e-6]) > 0, logical ([0 1]));

%!test <*the complement has the same areas, a constant changes no area, twice the levels have twice the deviation>
%! names = {'uint8', 'int8', 'uint16', 'int16', 'uint32', 'int32', 'uint64', 'int64'};
%! I = bitand (random_image (20, 30, 'uint8'), 63) + 64 * uint8 (rand (20, 30) > 0.5);
%! I = I - min (I(:));
%! [L, X, Y] = attribute_profile_thresholds (I, 'area', 4);
%! for name = names
%!   low = intmin (name{1}) + cast (I, name{1});
%!   high = intmax (name{1}) - cast (I, name{1});
%!   for image = {low, high}
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
%! [L, X, Y] = attribute_profile_thresholds (uint8 (I), 'area', 3);
%! for name = {'uint8', 'int8', 'int16', 'int32', 'uint64', 'int64'}
%!   ends = [intmin(name{1}), intmax(name{1})];
%!   [stretched{1:3}] = attribute_profile_thresholds (ends(I + 1), 'area', 3);
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

%!test <*fewer thresholds where there are fewer points, or where fewer do>
%! I = uint8 ([1 0 1 1 0 1 1 1]);
%! [L, X] = attribute_profile_thresholds (I, 'area', 9);
%! assert ({L, X}, {2, 1:3});
%! assert (numel (attribute_profile_thresholds (uint8 ([1 0 5 5 5 5 0 1]), 'diagonal', 9)) < 9);

%!error <the image is flat> attribute_profile_thresholds (7 * ones (3, 'int8'), 'area', 3)
%!error <'a' takes one value only, 1$> attribute_profile_thresholds (uint8 ([1 0]), 'a', 3)
%!error <'std' takes one value only, 0$> attribute_profile_thresholds (uint8 ([1 0]), 'std', 3)
%!error <'a' takes the values 1 and 2 only> attribute_profile_thresholds (uint8 ([1 0 0]), 'a', 3)
%!test <*N is a whole number, and the inputs are those of a profile>
%! I = uint8 (magic (4));
%! for N = {0, 2.5, NaN, Inf, [1 2], 'x', {}}
%!   fail ("attribute_profile_thresholds (I, 'area', N{1})", 'N has to be');
%! endfor
%! fail ("attribute_profile_thresholds (double (I), 'area', 3)", 'Data type not supported');
%! fail ("attribute_profile_thresholds (cat (3, I, I), 'area', 3)", 'more than two dimensions');
%! fail ("attribute_profile_thresholds ([], 'area', 3)", 'numeric 1D or 2D');
%! fail ("attribute_profile_thresholds (I, 'perimeter', 3)", 'Attribute not supported');
%! fail ("attribute_profile_thresholds (I, 'area', 3, 5)", 'connectivity');
%! fail ("attribute_profile_thresholds (I, 'area', 3, 4, 'most')", 'filtering rule must be');
