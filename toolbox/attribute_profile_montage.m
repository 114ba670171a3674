function picture = attribute_profile_montage (AP, L, scale)
%ATTRIBUTE_PROFILE_MONTAGE  The planes of a profile in one picture, with captions.
%
%   picture = attribute_profile_montage (AP)
%   picture = attribute_profile_montage (AP, L)
%   picture = attribute_profile_montage (AP, L, SCALE)
%
%   First row: the planes with dark regions removed, in their order; second row:
%   the input; third row: the planes with bright regions removed.  Each has a black
%   frame of one pixel.  Needs no display.
%
%   Input
%
%   AP     the attribute profile of an image, rows x columns x (2N + 1), of class
%          uint8, int8, uint16, int16, uint32, int32, uint64 or int64, as
%          attribute_profile returns it.
%   L      the thresholds that AP was computed with, N numbers.  They make the
%          captions: 'dark < 100' stands over the plane without dark regions of
%          an attribute below 100, 'bright < 100' over the one without bright
%          ones; whole numbers in full, others with four digits.  Without L, or for
%          [], the captions are the numbers of the planes.
%   SCALE  the size of a shown plane: 1 (default), a whole number for squares of
%          SCALE x SCALE pixels, or 1/STEP with a whole number STEP for the means
%          of STEP x STEP pixels; rows and columns left over are dropped then.
%
%   Output
%
%   picture  the montage, a matrix of class uint8 for imshow and imwrite.  Planes
%            of class uint8 are shown as they are; those of other classes with
%            the least value of the input as 0 and the greatest as 255, and what
%            lies outside is cut.
%
%   Errors
%
%   An AP, an L or a SCALE that is not as above is an error, and so is a STEP of
%   more than the rows or columns.
%
%   Example
%
%     I = uint8 (28 * magic (3));
%     L = [2 5];
%     AP = attribute_profile (I, 'area', L);
%     imwrite (attribute_profile_montage (AP, L, 16), fullfile (tempdir, 'profile.png'));
%
%   See also attribute_profile, attribute_profile_demo, imshow, imwrite

% SPDX-License-Identifier: MIT

  if nargin < 1
    error ('attribute_profile_montage: give a profile, as attribute_profile returns it');
  end
  n = (size (AP, 3) - 1) / 2;
  if ~isinteger (AP) || ndims (AP) > 3 || isempty (AP) || n < 1 || n ~= floor (n)
    error ('attribute_profile_montage: AP has to be a rows x columns x (2N + 1) array of an integer class');
  end
  if nargin < 2
    L = [];
  end
  if nargin < 3
    scale = 1;
  end
  if ~isempty (L) && ~(isnumeric (L) && isreal (L) && numel (L) == n)
    error ('attribute_profile_montage: L has to be as many real numbers as AP has thresholds: %d', n);
  end
  scale = checked_scale (scale, min (size (AP, 1), size (AP, 2)));

  low = 0;
  range = 255;
  if ~isa (AP, 'uint8')
    middle = double (AP(:,:,n+1));
    low = min (middle(:));
    range = max (max (middle(:)) - low, 1);  % a flat input has none to divide by
  end
  tiles = cell (1, 2*n+1);
  captions = cell (1, 2*n+1);
  for k = 1:2*n+1
    tiles{k} = uint8 (resized ((double (AP(:,:,k)) - low) * (255 / range), scale));
    captions{k} = caption_text ([caption_of(k, n, L) ' ']);
  end

  % Letters grow with the planes, to be legible where the whole picture is shown smaller than it is.
  letter = max (1, round (size (tiles{1}, 2) / 256));
  captions = cellfun (@(caption) resized (caption, letter), captions, 'UniformOutput', false);
  gap = 4;
  tiles = cellfun (@framed, tiles, 'UniformOutput', false);
  head = 9 * letter;
  [rows, cols] = size (tiles{1});
  row_step = head + rows + gap;
  column_step = max ([cols, cellfun(@(caption) size (caption, 2), captions)]) + gap;
  picture = repmat (uint8 (160), 3 * row_step + gap, n * column_step + gap);
  for k = 1:2*n+1
    if k <= n
      place = [0, k - 1];
    elseif k == n + 1
      place = [1, (n - 1) / 2];
    else
      place = [2, k - n - 2];
    end
    top = gap + place(1) * row_step;
    left = gap + floor (place(2) * column_step);
    [height, width] = size (captions{k});
    picture(top+(1:height), left+(1:width)) = 160 * uint8 (~captions{k});
    picture(top+head+(1:rows), left+(1:cols)) = tiles{k};
  end
end

function text = caption_of (k, n, L)
  if k == n + 1
    text = 'input';
  elseif isempty (L)
    text = sprintf ('plane %d', k);
  else
    sides = {'dark', 'bright'};
    text = [sides{1+(k>n)} ' < ' number_text(L(abs (k - n - 1)))];
  end
end

function scale = checked_scale (scale, shortest)
  whole = @(x) abs (x - round (x)) < 1e-6;
  if isnumeric (scale) && isempty (scale)
    scale = 1;
  elseif ~isnumeric (scale) || ~isscalar (scale) || ~isreal (scale) || ~(scale > 0 && scale < Inf) || ...
         ~whole (max (double (scale), 1 / double (scale)))
    error ('attribute_profile_montage: SCALE has to be a whole number, or 1/STEP with a whole number STEP');
  elseif scale * shortest < 1 - 1e-6
    error ('attribute_profile_montage: at SCALE 1/%.0f no pixel is left', 1 / scale);
  end
  scale = double (scale);
  if scale > 1
    scale = round (scale);
  end
end

function framed = framed (tile)
  framed = zeros (size (tile) + 2, 'uint8');
  framed(2:end-1,2:end-1) = tile;
end

function picture = resized (picture, scale)
  [rows, cols] = size (picture);
  if scale >= 1
    picture = picture(ceil ((1:rows*scale) / scale), ceil ((1:cols*scale) / scale));
  else
    step = round (1 / scale);
    rows = floor (rows / step);
    cols = floor (cols / step);
    blocks = reshape (picture(1:rows*step,1:cols*step), step, rows, step, cols);
    picture = reshape (mean (mean (blocks, 1), 3), rows, cols);
  end
end

%!function tile = tile_at (picture, row, column, height, width)
%!  % Of planes that are narrower than their captions, which are 9 rows high, and 66 columns wide for 'bright < 3 '.
%!  framed = picture(4 + (row-1) * (15+height) + 9 + (1:height+2), 4 + (column-1) * 70 + (1:width+2));
%!  tile = framed(2:end-1,2:end-1);
%!  framed(2:end-1,2:end-1) = 0;
%!  assert (~any (framed(:)));
%!endfunction

%!shared AP, L
%! L = [3 7];
%! AP = attribute_profile (uint8 (28 * magic (3)), 'area', L);

%!test <*dark planes stand above the input, bright ones below>
%! picture = attribute_profile_montage (AP, L);
%! assert (size (picture), [3 * 18 + 4, 2 * 70 + 4]);
%! places = [1 1; 1 2; 2 1.5; 3 1; 3 2];
%! for k = 1:5
%!   assert (tile_at (picture, places(k,1), places(k,2), 3, 3), AP(:,:,k));
%! endfor

%!test <*a whole scale repeats pixels, its inverse averages them>
%! assert (tile_at (attribute_profile_montage (AP, L, 3), 1, 1, 9, 9), repelem (AP(:,:,1), 3, 3));
%! even = cat (3, [0 8 2 2 9], [1 1 2 6 9], [0 0 0 0 9]);
%! even = uint8 (cat (1, even, even, even + 100));
%! assert (tile_at (attribute_profile_montage (even, 3, 1/2), 1, 1, 1, 2), uint8 ([4 2]));
%! assert (tile_at (attribute_profile_montage (even, 3, 1/2), 2, 1, 1, 2), uint8 ([1 4]));

%!test <*other classes are shown in the range of the input>
%! for name = {'int8', 'uint16', 'int32', 'uint64'}
%!   planes = cast (cat (3, [50 51 99], [20 50 71], [0 20 20]), name{1});
%!   picture = attribute_profile_montage (planes, 3);
%!   assert (tile_at (picture, 1, 1, 1, 3), uint8 ([150 155 255]));
%!   assert (tile_at (picture, 2, 1, 1, 3), uint8 ([0 150 255]));
%!   assert (tile_at (picture, 3, 1, 1, 3), uint8 ([0 0 0]));
%! endfor
%! flat = attribute_profile_montage (zeros (1, 1, 3, 'int16') - 5, 3);
%! assert (tile_at (flat, 2, 1, 1, 1), uint8 (0));

%!error <rows x columns x> attribute_profile_montage (AP(:,:,1:4), L)
%!error <rows x columns x> attribute_profile_montage (AP(:,:,1), [])
%!error <rows x columns x> attribute_profile_montage (double (AP), L)
%!error <give a profile> attribute_profile_montage ()
%!test <*L and SCALE are checked>
%! for bad = {3, {3, 7}, 'ab', [3 7i]}
%!   fail ("attribute_profile_montage (AP, bad{1})", 'as many real numbers as AP has thresholds: 2');
%! endfor
%! for bad = {'a', 2.5, 0.7, 0, -1, NaN, Inf, {}, {2}, [1 2], 2i, true}
%!   fail ("attribute_profile_montage (AP, L, bad{1})", 'SCALE has to be');
%! endfor
%! fail ("attribute_profile_montage (AP, L, 1/4)", 'at SCALE 1/4 no pixel is left');
%! assert (attribute_profile_montage (AP, L, []), attribute_profile_montage (AP, L, single (1)));
%! assert (size (attribute_profile_montage (AP, L, 1/3)), [3 * 16 + 4, 2 * 70 + 4]);
