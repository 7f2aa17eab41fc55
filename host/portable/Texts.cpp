#include "host/portable/Texts.h"

namespace obv_host {

// What the view does with the texts sets their form:
//   1   print format with exactly five equal colours, for the five key names;
//       at most 299 bytes of UTF-8 once formatted
//   3   drawn with recolouring, so it holds no '#'
//   4   print format, %a is a filter button's caption; at most 99 bytes
//   8   print format, the first %a is the volume, the second the file name
// Long texts are joined of pieces on purpose.
// NOLINTBEGIN(bugprone-suspicious-missing-comma)
const LanguageTexts kLanguages[kLanguageCount] = {
    {"en-US",
     u"English",
     {u"Board view",
      u"#%.6x Tab / Page Up / Page Down# Move   #%.6x Enter# Open setup option   "
      u"#%.6x Insert# Next category   #%.6x F12# Screenshot   #%.6x Esc# Leave",
      u"Boardscope – the board view for UEFI firmware",
      u"Point at a component, or move to it with the keyboard, to see what is installed there. "
      u"X returns to setup.",
      u"Show %a components", u"Save screenshot", u"Choose a USB drive for the picture.",
      u"Screenshot saved", u"The picture was saved on %a as %a.", u"Screenshot not saved",
      u"No USB drive was found. Plug one in and try again.", u"The USB drive is write-protected.",
      u"The picture could not be written to the USB drive.", u"OK", u"Cancel"}},
    {"de-DE",
     u"Deutsch",
     {u"Platinenansicht",
      u"#%.6x Tab / Bild auf / Bild ab# Wechseln   #%.6x Eingabe# Option öffnen   "
      u"#%.6x Einfg# Nächste Kategorie   #%.6x F12# Bildschirmfoto   #%.6x Esc# Verlassen",
      u"Boardscope – die Platinenansicht für UEFI-Firmware",
      u"Zeigen Sie auf ein Bauteil oder wählen Sie es mit der Tastatur, um zu sehen, was dort "
      u"eingebaut ist. X führt zurück zum Setup.",
      u"Bauteile anzeigen: %a", u"Bildschirmfoto speichern",
      u"Wählen Sie ein USB-Laufwerk für das Bild.", u"Bildschirmfoto gespeichert",
      u"Das Bild wurde auf %a als %a gespeichert.", u"Bildschirmfoto nicht gespeichert",
      u"Kein USB-Laufwerk gefunden. Stecken Sie eines ein und versuchen Sie es erneut.",
      u"Das USB-Laufwerk ist schreibgeschützt.",
      u"Das Bild konnte nicht auf das USB-Laufwerk geschrieben werden.", u"OK", u"Abbrechen"}},
    {"fr-FR",
     u"Français",
     {u"Vue de la carte mère",
      u"#%.6x Tab / Page préc. / Page suiv.# Déplacer   #%.6x Entrée# Ouvrir l’option   "
      u"#%.6x Inser# Catégorie suivante   #%.6x F12# Capture   #%.6x Échap# Quitter",
      u"Boardscope – la vue de la carte mère pour micrologiciels UEFI",
      u"Pointez un composant, ou atteignez-le au clavier, pour voir ce qui y est installé. "
      u"X revient à la configuration.",
      u"Afficher les composants %a", u"Enregistrer la capture d’écran",
      u"Choisissez une clé USB pour l’image.", u"Capture d’écran enregistrée",
      u"L’image a été enregistrée sur %a sous le nom %a.", u"Capture d’écran non enregistrée",
      u"Aucune clé USB trouvée. Branchez-en une et réessayez.",
      u"La clé USB est protégée en écriture.", u"L’image n’a pas pu être écrite sur la clé USB.",
      u"OK", u"Annuler"}},
    {"es-ES",
     u"Español",
     {u"Vista de la placa",
      u"#%.6x Tab / Re Pág / Av Pág# Mover   #%.6x Intro# Abrir opción   "
      u"#%.6x Insert# Categoría siguiente   #%.6x F12# Captura   #%.6x Esc# Salir",
      u"Boardscope – la vista de la placa para firmware UEFI",
      u"Señale un componente, o lléguese a él con el teclado, para ver qué hay "
      u"instalado. X vuelve a la configuración.",
      u"Mostrar los componentes %a", u"Guardar captura de pantalla",
      u"Elija una unidad USB para la imagen.", u"Captura de pantalla guardada",
      u"La imagen se ha guardado en %a como %a.", u"Captura de pantalla no guardada",
      u"No se ha encontrado ninguna unidad USB. Conecte una e inténtelo de nuevo.",
      u"La unidad USB está protegida contra escritura.",
      u"No se ha podido escribir la imagen en la unidad USB.", u"Aceptar", u"Cancelar"}},
    {"zh-Hans",
     u"简体中文",
     {u"主板视图",
      u"#%.6x Tab / Page Up / Page Down# 移动   #%.6x Enter# 打开设置选项   "
      u"#%.6x Insert# 下一类别   #%.6x F12# 截图   #%.6x Esc# 退出",
      u"Boardscope – UEFI 固件的主板视图",
      u"指向某个部件，或用键盘选中它，即可查看其安装情况。X 返回设置。", u"显示 %a 部件",
      u"保存截图", u"请选择用于保存图片的 USB 驱动器。", u"截图已保存",
      u"图片已保存到 %a，文件名为 %a。", u"截图未保存", u"未找到 USB 驱动器。请插入后重试。",
      u"该 USB 驱动器已写保护。", u"无法将图片写入该 USB 驱动器。", u"确定", u"取消"}},
    {"ja-JP",
     u"日本語",
     {u"ボードビュー",
      u"#%.6x Tab / Page Up / Page Down# 移動   #%.6x Enter# 設定項目を開く   "
      u"#%.6x Insert# 次の分類   #%.6x F12# 画面保存   #%.6x Esc# 終了",
      u"Boardscope – UEFI ファームウェアのボードビュー",
      u"部品を指すか、キーボードで選ぶと、取り付けられているものが表示されます。X "
      u"で設定に戻ります。",
      u"%a の部品を表示", u"画面の保存", u"画像を保存する USB ドライブを選んでください。",
      u"画面を保存しました", u"画像を %a に %a として保存しました。", u"画面を保存できませんでした",
      u"USB ドライブが見つかりません。接続してからやり直してください。",
      u"USB ドライブは書き込み禁止です。", u"USB ドライブに画像を書き込めませんでした。", u"OK",
      u"キャンセル"}},
};
// NOLINTEND(bugprone-suspicious-missing-comma)

}  // namespace obv_host
