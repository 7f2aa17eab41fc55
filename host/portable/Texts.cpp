#include "host/portable/Texts.h"

namespace obv_host {

const LanguageTexts kLanguages[kLanguageCount] = {
    {
        .Code = "en-US",
        .NativeName = u"English",
        .Title = u"Board view",
        .KeyHelp = u"#%.6x Tab / Page Up / Page Down# Move   #%.6x Enter# Open setup option   "
                   u"#%.6x Insert# Next category   #%.6x F12# Screenshot   #%.6x Esc# Leave",
        .Footer = u"Boardscope – the board view for UEFI firmware",
        .CloseHint = u"Point at a component, or move to it with the keyboard, to see what is "
                     u"installed there. X returns to setup.",
        .FilterHint = u"Show %a components",
        .VolumeTitle = u"Save screenshot",
        .VolumeText = u"Choose a USB drive for the picture.",
        .SavedTitle = u"Screenshot saved",
        .SavedText = u"The picture was saved on %a as %a.",
        .FailureTitle = u"Screenshot not saved",
        .NoVolumeText = u"No USB drive was found. Plug one in and try again.",
        .WriteProtectedText = u"The USB drive is write-protected.",
        .NotSavedText = u"The picture could not be written to the USB drive.",
        .ConfirmButton = u"OK",
        .CancelButton = u"Cancel",
    },
    {
        .Code = "de-DE",
        .NativeName = u"Deutsch",
        .Title = u"Platinenansicht",
        .KeyHelp =
            u"#%.6x Tab / Bild auf / Bild ab# Wechseln   #%.6x Eingabe# Option öffnen   "
            u"#%.6x Einfg# Nächste Kategorie   #%.6x F12# Bildschirmfoto   #%.6x Esc# Verlassen",
        .Footer = u"Boardscope – die Platinenansicht für UEFI-Firmware",
        .CloseHint = u"Zeigen Sie auf ein Bauteil oder wählen Sie es mit der Tastatur, um zu "
                     u"sehen, was dort eingebaut ist. X führt zurück zum Setup.",
        .FilterHint = u"Bauteile anzeigen: %a",
        .VolumeTitle = u"Bildschirmfoto speichern",
        .VolumeText = u"Wählen Sie ein USB-Laufwerk für das Bild.",
        .SavedTitle = u"Bildschirmfoto gespeichert",
        .SavedText = u"Das Bild wurde auf %a als %a gespeichert.",
        .FailureTitle = u"Bildschirmfoto nicht gespeichert",
        .NoVolumeText =
            u"Kein USB-Laufwerk gefunden. Stecken Sie eines ein und versuchen Sie es erneut.",
        .WriteProtectedText = u"Das USB-Laufwerk ist schreibgeschützt.",
        .NotSavedText = u"Das Bild konnte nicht auf das USB-Laufwerk geschrieben werden.",
        .ConfirmButton = u"OK",
        .CancelButton = u"Abbrechen",
    },
    {
        .Code = "fr-FR",
        .NativeName = u"Français",
        .Title = u"Vue de la carte mère",
        .KeyHelp =
            u"#%.6x Tab / Page préc. / Page suiv.# Déplacer   #%.6x Entrée# Ouvrir l’option   "
            u"#%.6x Inser# Catégorie suivante   #%.6x F12# Capture   #%.6x Échap# Quitter",
        .Footer = u"Boardscope – la vue de la carte mère pour micrologiciels UEFI",
        .CloseHint = u"Pointez un composant, ou atteignez-le au clavier, pour voir ce qui y est "
                     u"installé. X revient à la configuration.",
        .FilterHint = u"Afficher les composants %a",
        .VolumeTitle = u"Enregistrer la capture d’écran",
        .VolumeText = u"Choisissez une clé USB pour l’image.",
        .SavedTitle = u"Capture d’écran enregistrée",
        .SavedText = u"L’image a été enregistrée sur %a sous le nom %a.",
        .FailureTitle = u"Capture d’écran non enregistrée",
        .NoVolumeText = u"Aucune clé USB trouvée. Branchez-en une et réessayez.",
        .WriteProtectedText = u"La clé USB est protégée en écriture.",
        .NotSavedText = u"L’image n’a pas pu être écrite sur la clé USB.",
        .ConfirmButton = u"OK",
        .CancelButton = u"Annuler",
    },
    {
        .Code = "es-ES",
        .NativeName = u"Español",
        .Title = u"Vista de la placa",
        .KeyHelp = u"#%.6x Tab / Re Pág / Av Pág# Mover   #%.6x Intro# Abrir opción   "
                   u"#%.6x Insert# Categoría siguiente   #%.6x F12# Captura   #%.6x Esc# Salir",
        .Footer = u"Boardscope – la vista de la placa para firmware UEFI",
        .CloseHint = u"Señale un componente, o lléguese a él con el teclado, para ver qué hay "
                     u"instalado. X vuelve a la configuración.",
        .FilterHint = u"Mostrar los componentes %a",
        .VolumeTitle = u"Guardar captura de pantalla",
        .VolumeText = u"Elija una unidad USB para la imagen.",
        .SavedTitle = u"Captura de pantalla guardada",
        .SavedText = u"La imagen se ha guardado en %a como %a.",
        .FailureTitle = u"Captura de pantalla no guardada",
        .NoVolumeText =
            u"No se ha encontrado ninguna unidad USB. Conecte una e inténtelo de nuevo.",
        .WriteProtectedText = u"La unidad USB está protegida contra escritura.",
        .NotSavedText = u"No se ha podido escribir la imagen en la unidad USB.",
        .ConfirmButton = u"Aceptar",
        .CancelButton = u"Cancelar",
    },
    {
        .Code = "zh-Hans",
        .NativeName = u"简体中文",
        .Title = u"主板视图",
        .KeyHelp = u"#%.6x Tab / Page Up / Page Down# 移动   #%.6x Enter# 打开设置选项   "
                   u"#%.6x Insert# 下一类别   #%.6x F12# 截图   #%.6x Esc# 退出",
        .Footer = u"Boardscope – UEFI 固件的主板视图",
        .CloseHint = u"指向某个部件，或用键盘选中它，即可查看其安装情况。X 返回设置。",
        .FilterHint = u"显示 %a 部件",
        .VolumeTitle = u"保存截图",
        .VolumeText = u"请选择用于保存图片的 USB 驱动器。",
        .SavedTitle = u"截图已保存",
        .SavedText = u"图片已保存到 %a，文件名为 %a。",
        .FailureTitle = u"截图未保存",
        .NoVolumeText = u"未找到 USB 驱动器。请插入后重试。",
        .WriteProtectedText = u"该 USB 驱动器已写保护。",
        .NotSavedText = u"无法将图片写入该 USB 驱动器。",
        .ConfirmButton = u"确定",
        .CancelButton = u"取消",
    },
    {
        .Code = "ja-JP",
        .NativeName = u"日本語",
        .Title = u"ボードビュー",
        .KeyHelp = u"#%.6x Tab / Page Up / Page Down# 移動   #%.6x Enter# 設定項目を開く   "
                   u"#%.6x Insert# 次の分類   #%.6x F12# 画面保存   #%.6x Esc# 終了",
        .Footer = u"Boardscope – UEFI ファームウェアのボードビュー",
        .CloseHint = u"部品を指すか、キーボードで選ぶと、取り付けられているものが表示されます。X "
                     u"で設定に戻ります。",
        .FilterHint = u"%a の部品を表示",
        .VolumeTitle = u"画面の保存",
        .VolumeText = u"画像を保存する USB ドライブを選んでください。",
        .SavedTitle = u"画面を保存しました",
        .SavedText = u"画像を %a に %a として保存しました。",
        .FailureTitle = u"画面を保存できませんでした",
        .NoVolumeText = u"USB ドライブが見つかりません。接続してからやり直してください。",
        .WriteProtectedText = u"USB ドライブは書き込み禁止です。",
        .NotSavedText = u"USB ドライブに画像を書き込めませんでした。",
        .ConfirmButton = u"OK",
        .CancelButton = u"キャンセル",
    },
};

}  // namespace obv_host
