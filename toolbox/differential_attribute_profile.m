function DAP = differential_attribute_profile (AP)
%DIFFERENTIAL_ATTRIBUTE_PROFILE  Differences of neighbouring planes of a profile.
%
%   DAP = differential_attribute_profile (AP)
%
%   Each plane shows what one step of the profile removed: planes 1 to N the
%   dark regions, planes N + 1 to 2N the bright ones, and those between two
%   neighbouring thresholds in one plane.
%
%   Input
%
%   AP  the attribute profile of an image, rows x columns x (2N + 1), of class
%       uint8, int8, uint16, int16, uint32, int32, uint64 or int64, as
%       attribute_profile returns it.  Of an extended profile give the planes of
%       one band at a time.
%
%   Output
%
%   DAP  rows x columns x 2N: plane k is plane k of AP minus plane k + 1, in grey
%        levels.  The sum over k is the first plane of AP minus the last.
%
%   With increasing thresholds, and an increasing attribute (area, diagonal), a
%   difference is never negative: it is the height by which the step changed the
%   pixel.  For the inertia and the standard deviation, and for thresholds in
%   another order, it can have either sign.
%
%   The class of DAP holds each difference exactly:
%     AP                        DAP
%     uint8, int8               int16
%     uint16, int16             int32
%     uint32, int32             int64
%     uint64, int64             int64
%
%   Errors
%
%   An AP that is not as above is an error, and so is a difference in an AP of 64
%   bits that does not fit int64: it has to lie in -2^63 to 2^63 - 1.
%
%   Example
%
%     I = uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]);
%     DAP = differential_attribute_profile (attribute_profile (I, 'area', 3));
%     DAP(:,:,1)       % by how much dark regions of less than 3 pixels were raised
%     DAP(:,:,2)       % by how much bright ones were lowered
%
%   See also attribute_profile, extended_attribute_profile

% SPDX-License-Identifier: MIT

  if nargin < 1
    error ('differential_attribute_profile: give a profile, as attribute_profile returns it');
  end
  if ~isinteger (AP) || ndims (AP) > 3 || isempty (AP) || size (AP, 3) < 3 || mod (size (AP, 3), 2) == 0
    error ('differential_attribute_profile: AP has to be a rows x columns x (2N + 1) array of an integer class');
  end
  switch class (AP)
    case {'uint8', 'int8'}
      AP = int16 (AP);
    case {'uint16', 'int16'}
      AP = int32 (AP);
    case {'uint32', 'int32'}
      AP = int64 (AP);
    case 'uint64'
      % The top bit turned over, read as int64, is the value less 2^63: a shift, which leaves differences as they are.
      % A conversion would cut what is greater than int64 holds.
      AP = reshape (typecast (bitxor (AP(:), bitshift (uint64 (1), 63)), 'int64'), size (AP));
  end
  DAP = AP(:,:,1:end-1) - AP(:,:,2:end);
  % Integer arithmetic of the hosts saturates: a difference that was cut does not lead back to the first operand.
  if isa (AP, 'int64') && ~isequal (AP(:,:,2:end) + DAP, AP(:,:,1:end-1))
    error ('differential_attribute_profile: a difference does not fit int64');
  end
end

%!test <*worked out by hand>
%! I = uint8 ([2 2 9 9; 2 8 1 9; 7 7 1 3]);
%! DAP = differential_attribute_profile (attribute_profile (I, 'area', 3));
%! assert (DAP, cat (3, int16 ([0 0 0 0; 0 0 2 0; 0 0 2 0]), int16 ([0 0 0 0; 0 1 0 0; 0 0 0 0])));

%!test <*each class is widened enough for differences of either sign>
%! for pair = {'uint8', 'int16'; 'int8', 'int16'; 'uint16', 'int32'; 'int16', 'int32'; 'uint32', 'int64'; ...
%!             'int32', 'int64'}'
%!   low = intmin (pair{1});
%!   high = intmax (pair{1});
%!   span = double (high) - double (low);
%!   DAP = differential_attribute_profile (cat (3, low, high, low));
%!   assert (DAP, cast (cat (3, -span, span), pair{2}));
%! endfor

%!test <*64-bit differences are exact up to the ends of int64>
%! lowest = intmin ('int64');
%! highest = intmax ('int64');
%! half = bitshift (uint64 (1), 63);
%! top = intmax ('uint64');
%! differences = @(first, second) differential_attribute_profile (cat (3, first, second, second));
%! assert (differences ([-1 0], [lowest, highest]), cat (3, [highest, lowest + 1], int64 ([0 0])));
%! assert (differences (lowest, int64 (0)), cat (3, lowest, int64 (0)));
%! assert (differences ([top, top, 0], [half, top - 2, half]), cat (3, [highest, 2, lowest], int64 ([0 0 0])));
%! fail ('differences (int64 (0), lowest)', 'does not fit');
%! fail ('differences (lowest, int64 (1))', 'does not fit');
%! fail ('differences (top, half - 1)', 'does not fit');
%! fail ('differences (uint64 (0), half + 1)', 'does not fit');

%!error <give a profile> differential_attribute_profile ()
%!test <*AP has an odd number of planes, three at least, of an integer class>
%! for bad = {uint8(magic (3)), zeros(2, 2, 4, 'uint8'), zeros(2, 2, 3), zeros(0, 2, 3, 'uint8')}
%!   fail ('differential_attribute_profile (bad{1})', 'AP has to be');
%! endfor
